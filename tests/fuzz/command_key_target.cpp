// SPDX-License-Identifier: MIT
#include "core/net/udp_link.h"
#include "tests/core/net/record_texts.h"
#include "tests/core/net/udp_link_probe.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_wire.h"
#include "tests/fuzz/targets.h"
#include "tests/fuzz/text_model.h"

namespace {

constexpr char kAlnum[] = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

// "$" and the letters and digits that follow it; nothing without the "$".
std::string ModelKey(const std::string& line) {
  const std::string text = UpToNul(line);
  if (text.empty() || text[0] != '$') return "";
  return text.substr(0, text.find_first_not_of(kAlnum, 1));
}

void CheckKey(const std::string& line) {
  const std::string key = UdpLinkProbe::CommandKey(line);
  RequireSame(key, ModelKey(line), "the key");
  RequireSame(UdpLinkProbe::CommandKey(key), key, "the key of a key");
  if (!key.empty()) {
    RequireSame(UdpLinkProbe::CommandKey(key + "=" + line), key, "the key of a reply");
    RequireSame(UdpLinkProbe::CommandKey(key + "?"), key, "the key of a query");
  }
}

}  // namespace

void FuzzCommandKey(FuzzInput input) {
  const std::string command = UpToNul(input.Line());
  const std::string rest = input.Rest();
  // A line of its own, or one with the command's key, which is the usual case.
  const bool ownKey = rest.empty() || rest[0] != '=';
  const std::string answer = ownKey ? rest : ModelKey(command) + rest;
  CheckKey(command);
  CheckKey(answer);

  TheWire() = {};
  TheWire().datagram = answer + "\r\n";
  CUdpLink link;
  Require(link.Open(kNumericHost, CUdpLink::kDefaultPort) == 1, "the link opens");
  const std::string line = UpToNul(answer.substr(0, TheWire().datagram.find("\r\n")));
  RequireSame(link.Query(command.c_str()).GetString(), line, "the reply");
  const bool fits = ModelKey(command) == ModelKey(line);
  const std::vector<std::string> records = RecordTexts(link);
  Require(records.size() == (fits ? 0u : 1u), "a record exactly when the keys differ");
  if (!fits) RequireSame(records[0], command + " : Return Value Mismatch", "the record");
}
