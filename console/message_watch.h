// SPDX-License-Identifier: MIT
// The driver tells its user what went wrong by message boxes, and its worker waits until they are
// answered. velquinctl runs unattended, so it reads the boxes, answers them and passes the text on.
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace velquinctl {

/// Watches this process's message boxes from a thread of its own. Outlives every session, because
/// the end of a session waits for a box, too. Any thread.
class MessageWatch {
 public:
  /// Built on the thread that loads libraries later, before it does.
  MessageWatch();
  MessageWatch(const MessageWatch&) = delete;
  MessageWatch& operator=(const MessageWatch&) = delete;
  ~MessageWatch();

  /// @param answer false leaves the boxes to the user from now on; no text is then seen
  void SetAnswering(bool answer);

  /// @return the texts of the boxes answered since the last call, oldest first, UTF-8, one line
  ///         each.
  std::vector<std::string> Take();

  /// @return whether Take would return a text.
  bool HasText() const;

 private:
  struct Watcher;
  std::unique_ptr<Watcher> watcher_;  // never null
};

}  // namespace velquinctl
