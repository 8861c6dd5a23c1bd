// SPDX-License-Identifier: MIT
#include "gateways/mount/callback_thread.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

namespace velquin {

namespace {

constexpr std::chrono::milliseconds kLongestFarewell{500};

}  // namespace

struct CallbackThread::Shared {
  struct Entry {
    Task task;
    bool replaceable;
  };

  std::mutex lock;
  std::condition_variable changed;
  // Guarded by lock.
  std::deque<Entry> waiting;
  std::thread::id thread;
  bool begun = false;
  bool closing = false;
  bool ended = false;
};

CallbackThread::CallbackThread() : shared_(std::make_shared<Shared>()) {}

void CallbackThread::Post(Task task, bool replaceable) {
  const std::lock_guard guard(shared_->lock);
  if (shared_->closing) return;
  std::deque<Shared::Entry>& waiting = shared_->waiting;
  if (replaceable && !waiting.empty() && waiting.back().replaceable) {
    waiting.back().task = std::move(task);
  } else {
    waiting.push_back({std::move(task), replaceable});
  }
  shared_->changed.notify_all();
  if (shared_->begun) return;
  try {
    std::thread(&CallbackThread::Run, shared_).detach();
    shared_->begun = true;
  } catch (const std::system_error&) {
    // The system cannot create a thread now: the tasks wait for the next Post.
  }
}

void CallbackThread::Run(const std::shared_ptr<Shared>& shared) {
  std::unique_lock guard(shared->lock);
  shared->thread = std::this_thread::get_id();
  for (;;) {
    shared->changed.wait(guard, [&] { return shared->closing || !shared->waiting.empty(); });
    if (shared->waiting.empty()) break;
    Task task = std::move(shared->waiting.front().task);
    shared->waiting.pop_front();
    guard.unlock();
    try {
      task();
    } catch (...) {
      // As documented for callers: an exception of a callback has no effect.
    }
    task = nullptr;  // destroys what it holds without the lock, too
    guard.lock();
  }
  shared->ended = true;
  shared->changed.notify_all();
}

void CallbackThread::Close(Waiting waiting) {
  std::deque<Shared::Entry> dropped;
  std::unique_lock guard(shared_->lock);
  shared_->closing = true;
  if (waiting == Waiting::kDrop) dropped.swap(shared_->waiting);
  shared_->changed.notify_all();
  if (!shared_->begun || shared_->thread == std::this_thread::get_id()) return;
  shared_->changed.wait_for(guard, kLongestFarewell, [this] { return shared_->ended; });
}

}  // namespace velquin
