// SPDX-License-Identifier: MIT
// CallbackThread: calls other people's code, one task after the other, on a thread that does
// nothing else, so that it may block, throw, or destroy its owner. Post from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace velquin {

class CallbackThread {
 public:
  using Task = std::function<void()>;
  enum class Waiting { kDrop, kStillCall };  ///< what becomes of waiting tasks at the end

  CallbackThread();
  ~CallbackThread() { Close(Waiting::kDrop); }
  CallbackThread(const CallbackThread&) = delete;
  CallbackThread& operator=(const CallbackThread&) = delete;

  /// Adds a task; the first begins the thread. @param replaceable a task that takes the place of
  /// the last one if that is replaceable, too, and still waits
  void Post(Task task, bool replaceable = false);
  /// Ends the thread. Waits for a running task for up to half a second, after which that is left to
  /// itself; not at all when called by a task.
  void Close(Waiting waiting);

 private:
  struct Shared;
  static void Run(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;  // the thread keeps it, too, and may outlive this object
};

}  // namespace velquin
