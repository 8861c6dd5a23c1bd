// SPDX-License-Identifier: MIT
// What a link holds and answers, by its rules alone: bytes received stay until a line end; one
// exchange reads one datagram at most; every failure leaves a record.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/fuzz/scripted_wire.h"

class LinkModel {
 public:
  /// Opens as the wire allows. @return what Open returns.
  int Open(const ScriptedWire& wire, bool isNumericHost);
  void Close();
  /// @return what SetTimeOut returns.
  int SetTimeOut(int timeOutMs);
  /// @param wire as it is before the exchange @return what Query returns.
  std::string Query(const std::string& command, const ScriptedWire& wire);

  bool connected = false;
  std::string held;  ///< received and not yet given out
  int capacity = 0;
  platform::WaitTime timeOut = {0, 500000};
  std::vector<std::string> records;  ///< "COMMAND : REASON"
  std::string sent;                  ///< by the last exchange
  int socketsOpened = 0;             ///< the number of the last one is its handle
  std::vector<platform::SocketHandle> closed;

 private:
  bool Send(const std::string& line, const ScriptedWire& wire);
  bool Receive(const ScriptedWire& wire);
  void RecordWhenSlow(const std::string& command, uint32_t tookMs);
  void Record(const std::string& command, const std::string& reason) {
    records.push_back(command + " : " + reason);
  }
};
