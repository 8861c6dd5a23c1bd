// SPDX-License-Identifier: MIT
#include "core/net/udp_link.h"

#include <algorithm>

#include "tests/core/net/udp_link_probe.h"
#include "tests/fuzz/link_model.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_wire.h"
#include "tests/fuzz/targets.h"

namespace {

constexpr int kMaxSteps = 24;

std::string AnyCommand(FuzzInput& input) {
  static const char* const kCommands[] = {"$SYVER?", "$MTSTA?", "$MTSTP=1", "$", "", "OK"};
  const unsigned choice = input.Choice(7);
  if (choice < 6) return kCommands[choice];
  const std::string text = input.Text(input.Byte());
  // A command is a zero-terminated text.
  return text.substr(0, text.find('\0'));
}

// Pieces one after the other: a few bytes of the input can make the largest of datagrams.
std::string AnyDatagram(FuzzInput& input) {
  std::string datagram;
  for (unsigned pieces = input.Choice(8); pieces > 0; --pieces) {
    switch (input.Choice(8)) {
      case 0:
        datagram += "$SYVER=1.00\r\n";
        break;
      case 1:
        datagram += "$MTSTA=60310.25,1,0,0,0,45.0,1,2,6.0,-5.25,4\r\n";
        break;
      case 2:
        datagram += "\r\n";
        break;
      case 3:
        datagram += '\r';
        break;
      case 4: {
        const size_t count = input.Word() / 8;
        datagram.append(count, static_cast<char>(input.Byte()));
        break;
      }
      default:
        datagram += input.Text(input.Choice(64));
    }
  }
  constexpr size_t kLargestDatagram = 65507;
  if (datagram.size() > kLargestDatagram) datagram.resize(kLargestDatagram);
  return datagram;
}

class Run {
 public:
  explicit Run(FuzzInput& bytes) : input(bytes), wire(TheWire()) { wire = {}; }

  void Step();
  void CheckState();

 private:
  void Open();
  void PrepareExchange();
  void CheckExchange(const std::string& command, const std::string& reply);

  FuzzInput& input;
  ScriptedWire& wire;
  LinkModel model;
  size_t recordsSeen = 0;
  CUdpLink link;
  UdpLinkProbe probe{link};
};

void Run::Step() {
  switch (input.Choice(16)) {
    case 0:
      link.Close();
      model.Close();
      break;
    case 1:
    case 2:
      Open();
      break;
    case 3: {
      const int ms = input.Int32();
      Require(link.SetTimeOut(ms) == model.SetTimeOut(ms), "the result of SetTimeOut");
      break;
    }
    case 4: {
      PrepareExchange();
      const std::string reply = model.Query("$SYVER?", wire);
      const int answered = reply.compare(0, 7, "$SYVER=") == 0 ? 1 : 0;
      Require(link.CheckUnit() == answered, "the result of CheckUnit");
      RequireSame(wire.sent, model.sent, "the bytes sent");
      break;
    }
    default: {
      PrepareExchange();
      const std::string command = AnyCommand(input);
      CheckExchange(command, model.Query(command, wire));
    }
  }
}

void Run::Open() {
  const unsigned luck = input.Byte();
  wire.hasSockets = luck != 1;
  wire.canBind = luck != 2;
  wire.knowsHosts = luck != 3;
  const bool isNumericHost = luck % 2 == 0;
  const int expected = model.Open(wire, isNumericHost);
  Require(link.Open(isNumericHost ? kNumericHost : "mount.local", 60023) == expected,
          "the result of Open");
}

void Run::PrepareExchange() {
  wire.sent.clear();
  wire.sends = wire.receives = 0;
  const unsigned sending = input.Byte();
  wire.bytesPerSend = sending < 8 ? static_cast<int>(sending) + 1 : 1 << 30;
  wire.failingSend = sending >= 8 && sending < 16 ? static_cast<int>(sending) - 8 : -1;
  const unsigned waiting = input.Byte();
  wire.wait = {waiting == 1 ? 0 : 1, waiting != 2};
  if (waiting == 3) wire.wait = {platform::kSocketError, true};
  if (waiting == 4) wire.wait = {platform::kSocketError, false};
  wire.receiveFails = waiting == 5;
  wire.waitTakesMs = waiting >= 0xF0 ? static_cast<uint32_t>(input.Int32()) : waiting * 3;
  // On either side of what counts as slow.
  if (waiting == 6 || waiting == 7) wire.waitTakesMs = 494 + waiting;
  wire.datagram = AnyDatagram(input);
}

void Run::CheckExchange(const std::string& command, const std::string& reply) {
  const bool wasConnected = probe.Connected();
  const int capacityBefore = probe.Capacity();
  const CString answer = link.Query(command.c_str());
  RequireSame(std::string(answer.GetString(), static_cast<size_t>(answer.GetLength())), reply,
              "the reply");
  RequireSame(wire.sent, model.sent, "the bytes sent");
  Require(wasConnected || wire.sends + wire.receives == 0, "a closed link touches no socket");
  Require(wire.receives <= 1, "one datagram for one exchange");
  if (wire.receives == 1) {
    Require(wire.lastReceiveCapacity >= 2047, "room for a reply");
    Require(wire.lastReceiveCapacity < std::max(capacityBefore, capacityBefore + 2048),
            "room for a NUL behind what is received");
    Require(wire.lastTimeOut.seconds == model.timeOut.seconds &&
                wire.lastTimeOut.microseconds == model.timeOut.microseconds,
            "how long it waits");
  }
}

void Run::CheckState() {
  Require(probe.Connected() == model.connected, "connected");
  Require(link.GetLocalPort() == (model.connected ? kScriptedLocalPort : 65535), "the local port");
  Require(probe.Capacity() == model.capacity, "the capacity");
  Require((probe.Buffer() != nullptr) == model.connected, "a buffer exactly while connected");
  RequireSame(probe.Unread(), model.held, "the bytes held");
  if (model.connected) Require(probe.Buffer()[model.held.size()] == '\0', "a NUL behind the bytes");
  Require(wire.socketsOpened == model.socketsOpened, "the number of sockets opened");
  Require(wire.closed == model.closed, "the sockets closed");
  TimeOutErrorList errors;
  link.CopyTimeOutErrors(errors);
  Require(errors.GetSize() == static_cast<ptrdiff_t>(model.records.size()),
          "the number of records");
  for (; recordsSeen < model.records.size(); ++recordsSeen) {
    const TimeOutErrorW& error = errors[static_cast<ptrdiff_t>(recordsSeen)];
    RequireSame(std::string(error.strCommand) + " : " + error.strError.GetString(),
                model.records[recordsSeen], "a record");
  }
}

}  // namespace

void FuzzUdpLink(FuzzInput input) {
  Run run(input);
  for (int step = 0; step < kMaxSteps && !input.IsEmpty(); ++step) {
    run.Step();
    run.CheckState();
  }
}
