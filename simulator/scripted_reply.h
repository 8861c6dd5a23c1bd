// SPDX-License-Identifier: MIT
// What a ScriptedController does about one command: the datagrams it sends, when, and from where.
// A plain value; a text stands for the ordinary case, one line.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace simulator {

struct ScriptedReply {
  std::vector<std::string> datagrams;  ///< sent in this order, byte for byte; none is silence
  int delayMs = 0;                     ///< from the command's arrival
  bool fromElsewhere = false;          ///< sent from another address and port

  ScriptedReply() = default;
  /// One datagram of one line. @param line without line end, which is added
  ScriptedReply(const std::string& line) : datagrams{line + "\r\n"} {}   // NOLINT: meant implicit
  ScriptedReply(const char* line) : ScriptedReply(std::string(line)) {}  // NOLINT: meant implicit
};

/// No answer at all.
inline ScriptedReply Silence() {
  return {};
}

/// Several datagrams as they are.
inline ScriptedReply Datagrams(std::vector<std::string> datagrams) {
  ScriptedReply reply;
  reply.datagrams = std::move(datagrams);
  return reply;
}

/// One datagram as it is.
inline ScriptedReply Raw(std::string bytes) {
  return Datagrams({std::move(bytes)});
}

/// A datagram of zero bytes.
inline ScriptedReply EmptyDatagram() {
  return Raw("");
}

/// The same reply, later.
inline ScriptedReply Late(ScriptedReply reply, int delayMs) {
  reply.delayMs = delayMs;
  return reply;
}

/// The same reply from a stranger.
inline ScriptedReply FromElsewhere(ScriptedReply reply) {
  reply.fromElsewhere = true;
  return reply;
}

}  // namespace simulator
