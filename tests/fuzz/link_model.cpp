// SPDX-License-Identifier: MIT
#include "tests/fuzz/link_model.h"

#include <algorithm>
#include <cstdio>

#include "tests/fuzz/text_model.h"

namespace {

std::string KeyOf(const std::string& line) {
  if (line.empty() || line[0] != '$') return "";
  size_t end = 1;
  const auto isKeyCharacter = [](char c) {
    return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
  };
  while (end < line.size() && isKeyCharacter(line[end])) ++end;
  return line.substr(0, end);
}

}  // namespace

int LinkModel::Open(const ScriptedWire& wire, bool isNumericHost) {
  if (connected || !wire.hasSockets) return 0;
  ++socketsOpened;
  if (!isNumericHost && !wire.knowsHosts) return 0;
  if (!wire.canBind) return 0;
  connected = true;
  held.clear();
  capacity = 4096;
  return 1;
}

void LinkModel::Close() {
  if (!connected) return;
  closed.push_back(socketsOpened);
  connected = false;
  held.clear();
  capacity = 0;
}

int LinkModel::SetTimeOut(int timeOutMs) {
  if (connected) return 0;
  timeOut = {timeOutMs / 1000, timeOutMs % 1000 * 1000};
  return 1;
}

std::string LinkModel::Query(const std::string& command, const ScriptedWire& wire) {
  sent.clear();
  if (!connected || !Send(command + "\r\n", wire)) return "";
  if (wire.wait.result == 0) {
    Record(command, "TimeOut");
    return "";
  }
  std::string reply;
  if (!wire.wait.marked) {
    Record(command, "FD_ISSET");
  } else if (!Receive(wire)) {
    Record(command, "Socket Close");
    Close();
    return "";
  } else if (const size_t lineEnd = held.find("\r\n"); lineEnd == std::string::npos) {
    Record(command, "Can't Receve");
  } else {
    reply = UpToNul(held.substr(0, lineEnd));
    held.erase(0, lineEnd + 2);
    if (KeyOf(reply) != KeyOf(command)) Record(command, "Return Value Mismatch");
  }
  RecordWhenSlow(command, wire.waitTakesMs);
  return reply;
}

bool LinkModel::Send(const std::string& line, const ScriptedWire& wire) {
  for (int number = 0; sent.size() < line.size(); ++number) {
    if (number == wire.failingSend) return false;
    sent += line.substr(sent.size(), static_cast<size_t>(wire.bytesPerSend));
  }
  return true;
}

bool LinkModel::Receive(const ScriptedWire& wire) {
  if (capacity - static_cast<int>(held.size()) < 2048) capacity += 2048;
  if (wire.receiveFails || wire.datagram.empty()) return false;
  const size_t room = static_cast<size_t>(capacity) - held.size() - 1;
  held += wire.datagram.substr(0, room);
  return true;
}

void LinkModel::RecordWhenSlow(const std::string& command, uint32_t tookMs) {
  // The clock is a signed number: what looks like half of its range or more looks like the past.
  if (tookMs <= 500 || tookMs > 0x7FFFFFFF) return;
  char reason[32];
  std::snprintf(reason, sizeof reason, "TimeOut(%04u)", tookMs / 1000 + 1000);
  Record(command, reason);
}
