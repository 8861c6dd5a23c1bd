// SPDX-License-Identifier: MIT
#include "simulator/wire_record.h"

#include <climits>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

#include "simulator/characters.h"
#include "simulator/command_line.h"
#include "simulator/formatted.h"

namespace simulator {

namespace {

constexpr const char* kDirections[] = {"in", "out", "foreign", "lost"};  // as WireDirection

std::string Quoted(std::string_view bytes) {
  std::string text = "\"";
  for (const char c : bytes) {
    if (c == '\r') {
      text += "\\r";
    } else if (c == '\n') {
      text += "\\n";
    } else if (IsPrintable(c) && c != '\\' && c != '"') {
      text += c;
    } else {
      text += Formatted("\\x%02x", static_cast<unsigned char>(c));
    }
  }
  return text + "\"";
}

/// Takes the next word off a text. @return it, empty at the end.
std::string_view TakeWord(std::string_view& text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  const std::string_view word = text.substr(0, text.find(' '));
  text.remove_prefix(word.size());
  return word;
}

bool IsDirection(std::string_view word) {
  for (const char* direction : kDirections) {
    if (word == direction) return true;
  }
  return false;
}

/// Reads one line into the faults. @return what is wrong with it, or null.
const char* ReadLine(std::string_view line, RecordedFaults& faults) {
  const std::string_view time = TakeWord(line);
  if (!NumberValue(time, 0.0, 1e15)) return "no time";
  const auto exchange = WholeValue(TakeWord(line), 0, INT_MAX);
  if (!exchange) return "no exchange number";
  const std::string_view direction = TakeWord(line);
  if (!IsDirection(direction)) return "no direction (in, out, foreign, lost)";
  TakeWord(line);  // the host, which may be another one in the replay
  const auto fault = FaultFromText(TakeWord(line));
  if (!fault) return "unknown fault";
  const bool begins = direction == kDirections[0] && *exchange > 0;
  if (begins && !faults.emplace(*exchange, *fault).second) return "exchange number used twice";
  return nullptr;
}

}  // namespace

std::string WireRecordLine(const WireDatagram& datagram) {
  return Formatted("%.3f %d %s %s %s ", datagram.timeMs, datagram.exchange,
                   kDirections[static_cast<size_t>(datagram.direction)], datagram.peer.c_str(),
                   FaultText(datagram.fault).c_str()) +
         Quoted(datagram.bytes);
}

bool ReadWireRecord(std::string_view text, RecordedFaults& faults, std::string& complaint) {
  for (int number = 1; !text.empty(); ++number) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(line.size() < text.size() ? line.size() + 1 : line.size());
    if (line.ends_with('\r')) line.remove_suffix(1);
    if (number == 1 && line != kWireRecordTitle) {
      complaint = "no record of velquin-sim";
      return false;
    }
    if (line.empty() || line.starts_with('#')) continue;
    if (const char* wrong = ReadLine(line, faults)) {
      complaint = Formatted("line %d: %s", number, wrong);
      return false;
    }
  }
  if (complaint.empty() && faults.empty()) complaint = "no exchange in it";
  return complaint.empty();
}

FaultChooser ReplayOf(RecordedFaults faults) {
  const bool endsSilent = !faults.empty() && faults.rbegin()->second.silence;
  const int last = faults.empty() ? 0 : faults.rbegin()->first;
  return [faults = std::move(faults), endsSilent, last](int exchange, std::string_view) {
    const auto found = faults.find(exchange);
    if (found != faults.end()) return found->second;
    return Fault{.silence = endsSilent && exchange > last};
  };
}

}  // namespace simulator
