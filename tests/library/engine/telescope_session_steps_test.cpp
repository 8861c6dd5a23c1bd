// SPDX-License-Identifier: MIT
// The order of the steps in which a session starts and ends, and what another thread finds between
// two of them.
#include <atomic>
#include <future>
#include <iterator>
#include <memory>
#include <mutex>
#include <utility>

#include "tests/core/protocol/vq_ctrl_probe.h"
#include "tests/library/engine/engine_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class SessionSteps : public EngineTest {
 protected:
  /// Leaves a record for the journal behind without waiting for a time-out.
  void FailAnExchange() {
    controller.Answers("$ALINI=0", "$WRONG=1");
    telescope.AlignReset();
    ASSERT_TRUE(Idle());
  }
  ptrdiff_t Journals() {
    return std::distance(std::filesystem::directory_iterator(folder.Path()), {});
  }
  /// Starts on another thread; on return it has begun and waits, at the latest, for the call that
  /// makes this one.
  void BeginStart(const char* address) {
    start = Meanwhile([this, address] { return telescope.Start(nullptr, address); });
    EXPECT_TRUE(Eventually([this] { return probe.SessionActive(); }, kSoon));
  }
  int Check() {
    return telescope.Check(nullptr, controller.Address().c_str(), version, sizeof version, nullptr);
  }

  /// Runs once, on the thread that waits next for a Start, Check or End of another one, before it
  /// waits. What it knows about sessions it has asked before.
  void BeforeAWaitForOtherCalls(std::function<void()> action) {
    const auto* lock = platformCalls.LockEnteredBy([this] { probe.Address(); });
    ASSERT_NE(lock, nullptr);
    platformCalls.BeforeALockIsEntered(lock, std::move(action));
  }

  std::future<int> start;
  char version[64] = "untouched";
};

// --- A start begins while a probe runs ---------------------------------------------------------

// A start that begins while the probe closes its link makes a session, of which nothing is known
// yet. The probe had its answer before.
TEST_F(SessionSteps, AnswersACheckThoughAStartBeginsWhileItCloses) {
  platformCalls.BeforeASocketCloses([this] { BeginStart(controller.Address().c_str()); });
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  ASSERT_TRUE(start.valid());
  EXPECT_EQ(start.get(), 1);
}

// The start waits for the probe, and other checks already ask its session: they must not be told
// the version of the controller that the probe asks.
TEST_F(SessionSteps, AnswersNoCheckWithTheVersionOfAControllerThatOnlyAProbeAsked) {
  constexpr int kHandshake = 4;
  controller.SetFaults([this](int exchange, std::string_view) {
    if (exchange == kHandshake) BeginStart(kNobody);
    return simulator::Fault();
  });
  int answer = -1;
  char otherVersion[64] = "untouched";
  platformCalls.BeforeASocketCloses([&] {
    auto other = Meanwhile([&] {
      return telescope.Check(nullptr, kNobody, otherVersion, sizeof otherVersion, nullptr);
    });
    answer = other.get();
  });
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(answer, 0);
  EXPECT_STREQ(otherVersion, "untouched");
  ASSERT_TRUE(start.valid());
  EXPECT_EQ(start.get(), 0);
}

// A check that found no session has to look again after its wait: the link is the worker's now.
TEST_F(SessionSteps, AnswersACheckFromASessionThatBeganWhileItWaited) {
  BeforeAWaitForOtherCalls(
      [this] { EXPECT_EQ(telescope.Start(Window(0x10), controller.Address().c_str()), 1); });
  EXPECT_EQ(telescope.Check(Window(0x20), kNobody, version, sizeof version, nullptr), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3) << "those of the start";
  EXPECT_EQ(telescope.OwnerWindow(), Window(0x10));
  EXPECT_EQ(probe.Address(), controller.Address());
  EXPECT_TRUE(PollsAgain());
}

// The end that a start waits for ends the session before, not that of the start.
TEST_F(SessionSteps, MakesASessionThoughAnEndFinishesWhileTheStartWaits) {
  BeforeAWaitForOtherCalls([this] {
    EXPECT_TRUE(probe.SessionActive()) << "the start has begun";
    telescope.End();
    EXPECT_FALSE(probe.SessionActive());
  });
  ASSERT_EQ(Connect(), 1);
  EXPECT_TRUE(probe.SessionActive());
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(Connect(), 0);
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3) << "neither check nor second start may use the link";
  EXPECT_TRUE(PollsAgain());
}

// --- Start -------------------------------------------------------------------------------------

// Kept by the session and never used, but a session is always told the same.
TEST_F(SessionSteps, OpensTheSessionOfAStartWithPort80AndNothing) {
  ASSERT_EQ(Connect(), 1);
  telescope.End();
  EXPECT_EQ(VQCtrlProbe(probe.Device()).Port(), 80);
  EXPECT_EQ(VQCtrlProbe(probe.Device()).OpenArg(), 0);
}

TEST_F(SessionSteps, OpensTheSessionOfACheckWithPort80AndNothing) {
  ASSERT_EQ(Check(), 1);
  EXPECT_EQ(VQCtrlProbe(probe.Device()).Port(), 80);
  EXPECT_EQ(VQCtrlProbe(probe.Device()).OpenArg(), 0);
}

TEST_F(SessionSteps, StartsWithTheFailedPollsOfTheLastSession) {
  StartSession();
  telescope.End();
  for (int failed = 0; failed < 11; ++failed) telescope.OnPoll();  // there is no link
  ASSERT_EQ(probe.FailedPolls(), 11);
  // A box holds the worker before its first poll.
  app.Hold();
  telescope.Look(nullptr);
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  EXPECT_EQ(probe.FailedPolls(), 11);
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 0);
  app.Answer();
  EXPECT_TRUE(Eventually([&] { return telescope.GetPos(radec) == 1; }, kSoon));
}

// --- End ---------------------------------------------------------------------------------------

TEST_F(SessionSteps, WritesTheJournalBeforeItAsksTheWorkerToEnd) {
  StartSession();
  FailAnExchange();
  bool connected = false;
  bool hasThread = false;
  std::vector<int> queue = {-1};
  platformCalls.BeforeALocalTime([&] {
    connected = telescope.GetConnected() != 0;
    hasThread = rhythm.HasThread();
    queue = probe.Queue();
  });
  telescope.End();
  EXPECT_TRUE(connected);
  EXPECT_TRUE(hasThread);
  EXPECT_THAT(queue, IsEmpty());
  EXPECT_EQ(Journals(), 1);
}

TEST_F(SessionSteps, DropsTheOwnerBeforeItEnds) {
  ASSERT_EQ(telescope.Start(Window(0x10), controller.Address().c_str()), 1);
  FailAnExchange();
  HWND owner = Window(0x20);
  platformCalls.BeforeALocalTime([&] { owner = telescope.OwnerWindow(); });
  telescope.End();
  EXPECT_EQ(owner, nullptr);
}

// Tells when its worker has left the loop and touches the engine no more.
class TellingTelescope : public CTelescope {
 public:
  explicit TellingTelescope(std::atomic<bool>& workerHasLeft) : left(workerHasLeft) {}
  void Run() override {
    CTelescope::Run();
    left = true;
  }

 private:
  std::atomic<bool>& left;
};

// An engine that goes while it is connected only waits for its worker; End is what writes.
TEST_F(SessionSteps, WritesNoJournalWhenTheEngineIsDestroyed) {
  controller.Answers("$ALINI=0", "$WRONG=1");
  std::atomic<bool> workerHasLeft = false;
  auto other = std::make_unique<TellingTelescope>(workerHasLeft);
  other->SetLogPath((folder.Narrow() + "/").c_str());
  other->AlignReset();
  TelescopeProbe(*other).Enqueue(kCommandClose);
  ASSERT_EQ(other->Start(nullptr, controller.Address().c_str()), 1);
  ASSERT_TRUE(Eventually([&] { return workerHasLeft.load(); }, kSoon));
  ASSERT_EQ(other->GetConnected(), 1);
  bool asked = false;
  platformCalls.BeforeALocalTime([&] { asked = true; });
  other.reset();
  EXPECT_FALSE(asked);
  EXPECT_EQ(Journals(), 0);
}

// --- Busy pointer ------------------------------------------------------------------------------

class BusyPointer : public SessionSteps {
 protected:
  using Exchanges = std::vector<std::pair<std::string, int>>;

  BusyPointer() {
    controller.SetFaults([this](int, std::string_view command) {
      const std::lock_guard guard(exchangesLock);
      exchanges.emplace_back(command.substr(0, command.find_first_of("=?") + 1),
                             platformCalls.BusyPointers());
      return simulator::Fault();
    });
  }
  ~BusyPointer() override { controller.SetFaults({}); }

  /// The commands so far without values, each with the number of busy pointers during its exchange.
  Exchanges Seen() {
    const std::lock_guard guard(exchangesLock);
    return exchanges;
  }

  std::mutex exchangesLock;
  Exchanges exchanges;  // guarded by exchangesLock
};

TEST_F(BusyPointer, IsShownForTheWholeStartAndOnceMoreForTheReadout) {
  ASSERT_EQ(Connect(), 1);
  EXPECT_EQ(platformCalls.BusyPointers(), 0);
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  Exchanges seen = Seen();
  seen.resize(8);
  EXPECT_THAT(seen, ElementsAre(Pair("$SYVER?", 1), Pair("$SYVER?", 1), Pair("$MTMDL?", 1),
                                Pair("$SYVER?", 1), Pair("$SYLOC?", 2), Pair("$SYUTM?", 2),
                                Pair("$MTCOM=", 1), Pair("$MTSTA?", 0)));
}

TEST_F(BusyPointer, StaysWhileTheUserIsToldThatNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  app.Hold();
  auto failing = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  EXPECT_EQ(platformCalls.BusyPointers(), 1);
  app.Answer();
  EXPECT_EQ(failing.get(), 0);
  EXPECT_EQ(platformCalls.BusyPointers(), 0);
}

TEST_F(BusyPointer, IsShownForTheReadoutBehindAHandOff) {
  StartSession();
  {
    const std::lock_guard guard(exchangesLock);
    exchanges.clear();
  }
  const SiteTime time = {2024, 1, 15, 21, 0, 0.0, 9.0};
  const SiteLocation location = {35.681, 139.767, 0.0};
  telescope.BaseSetting(&time, &location);
  ASSERT_TRUE(Idle());
  ASSERT_TRUE(controller.Saw("$SYUTM?"));
  for (const auto& [command, pointers] : Seen()) {
    EXPECT_EQ(pointers, command == "$SYLOC?" || command == "$SYUTM?" ? 1 : 0) << command;
  }
}

TEST_F(BusyPointer, IsShownWhileAnEndWaitsForTheWorker) {
  StartSession();
  app.Hold();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  auto end = Meanwhile([this] { return telescope.End(); });
  EXPECT_TRUE(Eventually([this] { return platformCalls.BusyPointers() == 1; }, kSoon));
  app.Answer();
  end.get();
  EXPECT_EQ(platformCalls.BusyPointers(), 0);
}

TEST_F(BusyPointer, IsNotShownByAnEndWithoutAWorkerNorByACheck) {
  telescope.End();
  ASSERT_EQ(Check(), 1);
  EXPECT_EQ(platformCalls.BusyPointersSoFar(), 0);
}

}  // namespace
