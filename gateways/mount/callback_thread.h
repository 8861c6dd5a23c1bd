// SPDX-License-Identifier: MIT
// CallbackThread: runs callers' code, one task after the other, on a dedicated thread. A task may
// block, throw, or destroy the owner of this object. Post may be called from any thread.
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace velquin {

class CallbackThread {
 public:
  using Task = std::function<void()>;
  enum class Waiting { kDrop, kStillCall };  ///< whether waiting tasks run at the end

  CallbackThread();
  ~CallbackThread() { Close(Waiting::kDrop); }
  CallbackThread(const CallbackThread&) = delete;
  CallbackThread& operator=(const CallbackThread&) = delete;

  /// Adds a task; the first one starts the thread. @param replaceable the task replaces the last
  /// one if that is replaceable, too, and still waits
  void Post(Task task, bool replaceable = false);
  /// Ends the thread. Waits up to half a second for a running task, then leaves that to finish by
  /// itself. Does not wait when called by a task.
  void Close(Waiting waiting);

 private:
  struct Shared;
  static void Run(const std::shared_ptr<Shared>& shared);

  std::shared_ptr<Shared> shared_;  // the thread holds it, too, and may outlive this object
};

}  // namespace velquin
