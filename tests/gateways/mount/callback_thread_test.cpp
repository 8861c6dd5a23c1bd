// SPDX-License-Identifier: MIT
#include "gateways/mount/callback_thread.h"

#include <gmock/gmock.h>

#include <atomic>
#include <future>
#include <stdexcept>
#include <vector>

namespace {

using velquin::CallbackThread;
using Waiting = CallbackThread::Waiting;

TEST(CallbackThread, CallsInOrderAndSurvivesWhatIsThrown) {
  std::vector<int> calls;
  CallbackThread thread;
  for (int i = 0; i < 5; ++i) {
    thread.Post([&calls, i] {
      calls.push_back(i);
      throw std::runtime_error("a careless listener");
    });
  }
  thread.Close(Waiting::kStillCall);
  EXPECT_THAT(calls, testing::ElementsAre(0, 1, 2, 3, 4));
}

TEST(CallbackThread, KeepsOnlyTheLastOfReplaceableTasksThatWait) {
  std::promise<void> begun, goOn;
  std::vector<int> calls;
  CallbackThread thread;
  thread.Post([&] {
    begun.set_value();
    goOn.get_future().wait();
  });
  begun.get_future().wait();
  for (int i = 0; i < 3; ++i) thread.Post([&calls, i] { calls.push_back(i); }, true);
  thread.Post([&calls] { calls.push_back(10); });
  for (int i = 20; i < 23; ++i) thread.Post([&calls, i] { calls.push_back(i); }, true);
  goOn.set_value();
  thread.Close(Waiting::kStillCall);
  EXPECT_THAT(calls, testing::ElementsAre(2, 10, 22));
}

TEST(CallbackThread, BeginsNothingAfterTheEnd) {
  std::promise<void> goOn;
  std::atomic<int> calls = 0;
  CallbackThread thread;
  thread.Post([&] {
    goOn.get_future().wait();
    thread.Close(Waiting::kDrop);
  });
  thread.Post([&] { ++calls; });
  goOn.set_value();
  thread.Close(Waiting::kStillCall);
  thread.Post([&] { ++calls; });
  thread.Close(Waiting::kStillCall);
  EXPECT_EQ(calls, 0);
}

TEST(CallbackThread, MayBeDestroyedByItsOwnTask) {
  auto thread = std::make_shared<CallbackThread>();
  std::promise<void> done;
  CallbackThread* posting = thread.get();
  posting->Post([owner = std::move(thread), &done]() mutable {
    owner.reset();
    done.set_value();
  });
  EXPECT_EQ(done.get_future().wait_for(std::chrono::seconds(20)), std::future_status::ready);
}

TEST(CallbackThread, LeavesABlockedTaskAfterHalfASecond) {
  const auto goOn = std::make_shared<std::promise<void>>();
  const auto ended = std::make_shared<std::promise<void>>();
  const auto begin = std::chrono::steady_clock::now();
  {
    std::promise<void> begun;
    CallbackThread thread;
    thread.Post([&begun, goOn, ended] {
      begun.set_value();
      goOn->get_future().wait();
      ended->set_value();
    });
    begun.get_future().wait();
  }
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
  goOn->set_value();
  ended->get_future().wait();
}

}  // namespace
