// SPDX-License-Identifier: MIT
// Starting, probing and ending a session.
#include <chrono>
#include <future>
#include <thread>

#include "res/string_ids.h"
#include "tests/library/engine/engine_fixture.h"
#include "tests/support/file_text.h"

namespace {

using namespace std::chrono_literals;
using simulator::Silence;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::Gt;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

const std::vector<std::string> kProbeCommands = {"$SYVER?", "$SYVER?", "$MTMDL?", "$SYVER?"};

class Session : public EngineTest {
 protected:
  int Check(const std::string& address) {
    return telescope.Check(nullptr, address.c_str(), version, sizeof version, extra);
  }
  int Check() { return Check(controller.Address()); }
  // The controller's view of how many sockets the driver has used so far.
  size_t Conversations() {
    std::vector<uint16_t> ports;
    for (const auto& datagram : controller.Received()) ports.push_back(datagram.fromPort);
    std::sort(ports.begin(), ports.end());
    return std::unique(ports.begin(), ports.end()) - ports.begin();
  }
  // The journals in the folder, oldest name first.
  std::vector<std::string> Journals() {
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      paths.push_back(entry.path());
    }
    std::sort(paths.begin(), paths.end());
    std::vector<std::string> texts;
    for (const auto& path : paths) texts.push_back(ReadWholeFile(path).value_or("unreadable"));
    return texts;
  }
  void WriteJournalsAs(const std::string& prefix) { telescope.SetLogPrefix(prefix.c_str()); }

  char version[64] = "untouched";
  char extra[8] = "extra";
};

// --- Start -------------------------------------------------------------------------------------

TEST_F(Session, IdentifiesTheControllerThenReadsSiteAndClockThenSendsTheMeridianSettings) {
  EXPECT_EQ(Connect(), 1);
  ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
  std::vector<std::string> commands = controller.Commands();
  commands.resize(8);
  EXPECT_THAT(commands, ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?", "$SYVER?", "$SYLOC?",
                                    "$SYUTM?", "$MTCOM=0.000000,3.000000", "$MTSTA?"));
}

TEST_F(Session, RunsAfterASuccessfulStart) {
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_FALSE(rhythm.HasThread());
  ASSERT_EQ(Connect(), 1);
  EXPECT_EQ(telescope.GetConnected(), 1);
  EXPECT_TRUE(rhythm.HasThread());
  EXPECT_STREQ(telescope.GetVersionText(), "1.00");
  EXPECT_THAT(app.Boxes(), IsEmpty());
  EXPECT_TRUE(PollsAgain());
}

TEST_F(Session, RunsOnThoughReadoutAndMeridianSettingsStayUnanswered) {
  controller.IsSilentTo("$SYLOC?");
  controller.IsSilentTo("$MTCOM=");
  EXPECT_EQ(Connect(), 1);
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Session, TellsTheUserWhenNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(Connect(), 0);
  ASSERT_THAT(app.Boxes(), SizeIs(1));
  EXPECT_EQ(app.Boxes()[0].text, TableText(kTextNoResponse));
  EXPECT_EQ(app.Boxes()[0].title, "VELQUIN");
  EXPECT_EQ(app.Boxes()[0].type, 0u);
  EXPECT_EQ(app.Boxes()[0].thread, std::this_thread::get_id());
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_THAT(controller.Commands(), ElementsAre("$SYVER?"));
}

TEST_F(Session, TellsTheUserWhenThereIsNoSuchHost) {
  EXPECT_EQ(telescope.Start(nullptr, std::string(300, 'x').c_str()), 0);
  EXPECT_THAT(BoxTexts(), ElementsAre(TableText(kTextNoResponse)));
}

TEST_F(Session, TitlesTheMessagesWithTheHostsName) {
  controller.IsSilentTo("$SYVER?");
  telescope.SetName("Scope");
  Connect();
  telescope.SetName("Other");
  EXPECT_STREQ(app.AppName(), "Scope");  // a name counts from the next start on
  Connect();
  telescope.SetName("");
  Connect();
  ASSERT_THAT(app.Boxes(), SizeIs(3));
  EXPECT_EQ(app.Boxes()[0].title, "Scope");
  EXPECT_EQ(app.Boxes()[1].title, "Other");
  EXPECT_EQ(app.Boxes()[2].title, "Other");  // an empty one changes nothing
}

TEST_F(Session, ClosesTheLinkWhenTheControllerFallsSilentAfterItsIdentification) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "$SYVER=1.00", Silence()});
  EXPECT_EQ(Connect(), 0);
  EXPECT_THAT(BoxTexts(), ElementsAre(TableText(kTextNoResponse)));
  EXPECT_THAT(controller.Commands(), ElementsAreArray(kProbeCommands));
  EXPECT_EQ(telescope.GetConnected(), 0);
  // The next start speaks through a new socket.
  controller.LooksLikeAMount();
  EXPECT_EQ(Connect(), 1);
  EXPECT_EQ(Conversations(), 2u);
}

TEST_F(Session, StartsWithoutAModelWhenOnlyTheSecondVersionQueryIsLost) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", Silence(), "$SYVER=2.10"});
  EXPECT_EQ(Connect(), 1);
  EXPECT_FALSE(controller.Saw("$MTMDL?"));
  EXPECT_STREQ(telescope.GetVersionText(), "2.10");
}

TEST_F(Session, RefusesAControllerWithoutAModel) {
  controller.Answers("$MTMDL?", "$MTMDL=1,2.5");
  EXPECT_EQ(Connect(), 0);
  EXPECT_THAT(BoxTexts(), ElementsAre(TableText(kTextNoResponse)));
  EXPECT_THAT(controller.Commands(), ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?"));
}

TEST_F(Session, SucceedsAtTheSecondAttemptOnceTheControllerIsSwitchedOn) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(Connect(), 0);
  controller.LooksLikeAMount();
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(Conversations(), 2u) << "the first attempt's link was not closed";
}

TEST_F(Session, ReachesAnotherControllerAfterAnAttemptInVain) {
  EXPECT_EQ(telescope.Start(nullptr, kNobody), 0);
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(PollsAgain());
  telescope.End();
  EXPECT_EQ(Check(kNobody), 0);
  EXPECT_EQ(Connect(), 1);
}

TEST_F(Session, IsIdleWhileNeitherAWorkerNorAHostIsAtWork) {
  EXPECT_TRUE(telescope.IsIdle());
  controller.AnswersLate("$SYVER?", "$SYVER=1.00", 100);
  auto check = Meanwhile([this] { return Check(); });
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kSoonMs));
  EXPECT_FALSE(telescope.IsIdle()) << "a check";
  check.get();
  EXPECT_TRUE(telescope.IsIdle());
  controller.Clear();
  auto start = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kSoonMs));
  EXPECT_FALSE(telescope.IsIdle()) << "a start";
  start.get();
  EXPECT_FALSE(telescope.IsIdle()) << "a session";
  telescope.End();
  EXPECT_TRUE(telescope.IsIdle());
}

TEST_F(Session, StartsLaterWhenTheSystemHadNoThread) {
  platformCalls.HasNoThreads();
  EXPECT_EQ(Connect(), 0);
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_FALSE(rhythm.HasThread());
  platformCalls.WorksAgain();
  EXPECT_EQ(Connect(), 1);
  EXPECT_EQ(Conversations(), 2u) << "the link was left open";
  EXPECT_TRUE(PollsAgain());
}

TEST_F(Session, StartsLaterWhenThereWasNoMemory) {
  controller.IsSilentTo("$SYVER?");
  app.HasMemory(false);
  EXPECT_EQ(Connect(), 0);
  EXPECT_TRUE(telescope.IsIdle());
  controller.LooksLikeAMount();
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(PollsAgain());
}

// Memory that ran out between two exchanges left the link tied to the controller of that attempt,
// and no other could be reached.
TEST_F(Session, ReachesAnotherControllerAfterAStartWithoutMemory) {
  platformCalls.HasNoMemoryFor("$SYVER?");
  EXPECT_EQ(telescope.Start(nullptr, kNobody), 0);
  EXPECT_TRUE(telescope.IsIdle());
  platformCalls.WorksAgain();
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(PollsAgain());
}

TEST_F(Session, ClosesTheLinkWhereverAStartHadNoMemory) {
  for (const char* command : {"$MTMDL?", "$SYLOC?", "$SYUTM?", "$MTCOM="}) {
    controller.Clear();
    platformCalls.HasNoMemoryFor(command);
    EXPECT_EQ(Connect(), 0) << command;
    platformCalls.WorksAgain();
    EXPECT_EQ(Connect(), 1) << command;
    EXPECT_EQ(Conversations(), 2u) << "the link was left open at " << command;
    telescope.End();
  }
}

TEST_F(Session, ReachesAnotherControllerAfterACheckWithoutMemory) {
  platformCalls.HasNoMemoryFor("$SYVER?");
  EXPECT_THROW(Check(kNobody), std::bad_alloc);
  platformCalls.WorksAgain();
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
}

// --- A session that runs is left alone --------------------------------------------------------

TEST_F(Session, RefusesASecondStartAndLeavesTheFirstAsItIs) {
  ASSERT_EQ(telescope.Start(Window(0x10), controller.Address().c_str()), 1);
  EXPECT_EQ(telescope.Start(Window(0x20), kNobody), 0);
  EXPECT_EQ(telescope.OwnerWindow(), Window(0x10));
  EXPECT_EQ(probe.Address(), controller.Address());
  EXPECT_EQ(telescope.GetConnected(), 1);
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Session, AnswersACheckFromTheVersionTextWhileItRuns) {
  ASSERT_EQ(telescope.Start(Window(0x10), controller.Address().c_str()), 1);
  EXPECT_EQ(telescope.Check(Window(0x20), kNobody, version, sizeof version, extra), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(extra[0], '\0');
  EXPECT_EQ(telescope.OwnerWindow(), Window(0x10));
  EXPECT_EQ(probe.Address(), controller.Address());
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
}

TEST_F(Session, RefusesAStartWhileAnotherStartIsAtWork) {
  controller.AnswersLate("$SYVER?", "$SYVER=1.00", 200);
  auto first = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kSoonMs));
  EXPECT_EQ(Connect(), 0);
  EXPECT_EQ(first.get(), 1);
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
}

// The version that an earlier controller told is no answer of the one that is asked now.
TEST_F(Session, AnswersACheckWithNothingUntilItsControllerHasAnswered) {
  ASSERT_EQ(Check(), 1);
  controller.IsSilentTo("$SYVER?");
  app.Hold();
  auto start = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  auto check = Meanwhile([this] { return Check(); });
  ASSERT_EQ(check.wait_for(kSoon), std::future_status::ready) << "it waits for the user";
  EXPECT_EQ(check.get(), 0);
  app.Answer();
  EXPECT_EQ(start.get(), 0);
}

TEST_F(Session, AnswersNoCheckWithTheVersionOfTheSessionBefore) {
  StartSession();
  ASSERT_EQ(Check(), 1);
  ASSERT_STREQ(version, "1.00");
  telescope.End();
  controller.IsSilentTo("$SYVER?");
  app.Hold();
  auto start = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  version[0] = '\0';
  EXPECT_EQ(Check(), 0);
  EXPECT_STREQ(version, "");
  app.Answer();
  EXPECT_EQ(start.get(), 0);
}

TEST_F(Session, WaitsWithItsEndUntilTheUserHasAnsweredItsStart) {
  controller.IsSilentTo("$SYVER?");
  app.Hold();
  auto start = Meanwhile([this] { return Connect(); });
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  auto end = Meanwhile([this] { return telescope.End(); });
  EXPECT_EQ(end.wait_for(100ms), std::future_status::timeout);
  app.Answer();
  EXPECT_EQ(start.get(), 0);
  EXPECT_EQ(end.get(), 1);
}

TEST_F(Session, WaitsWithItsStartForAProbeThatRuns) {
  controller.AnswersLate("$SYVER?", "$SYVER=1.00", 100);
  auto check = Meanwhile([this] { return Check(); });
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kSoonMs));
  EXPECT_EQ(Connect(), 1);
  EXPECT_EQ(check.get(), 1);
  std::vector<std::string> commands = controller.Commands();
  ASSERT_THAT(commands, SizeIs(Gt(8u)));
  commands.resize(8);
  std::vector<std::string> expected = kProbeCommands;
  expected.insert(expected.end(), kProbeCommands.begin(), kProbeCommands.end());
  EXPECT_EQ(commands, expected);
}

TEST_F(Session, NeverHasTwoWorkersHoweverStartAndEndMeet) {
  // A probe holds both back, so that either may go first; a start must be refused or be the only
  // one in both cases.
  for (int round = 0; round < 4; ++round) {
    controller.Clear();
    controller.AnswersLate("$SYVER?", "$SYVER=1.00", 60);
    auto check = Meanwhile([this] { return Check(); });
    ASSERT_TRUE(controller.WaitFor("$SYVER?", kSoonMs));
    auto end = Meanwhile([this] { return telescope.End(); });
    std::this_thread::sleep_for(10ms);
    auto start = Meanwhile([this] { return Connect(); });
    end.get();
    start.get();
    check.get();
    controller.LooksLikeAMount();
    if (rhythm.HasThread()) {
      EXPECT_EQ(Connect(), 0) << "a second worker in round " << round;
    }
    telescope.End();
    EXPECT_FALSE(rhythm.HasThread());
    const int polls = controller.CountOf("$MTSTA?");
    std::this_thread::sleep_for(150ms);
    EXPECT_EQ(controller.CountOf("$MTSTA?"), polls) << "a worker was lost in round " << round;
  }
}

// --- Check -------------------------------------------------------------------------------------

TEST_F(Session, ChecksByIdentifyingTheControllerAndCloses) {
  EXPECT_EQ(Check(), 1);
  EXPECT_STREQ(version, "1.00");
  EXPECT_EQ(extra[0], '\0');
  EXPECT_EQ(extra[1], 'x') << "only the first byte is the driver's";
  EXPECT_THAT(controller.Commands(), ElementsAreArray(kProbeCommands));
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_EQ(Check(), 1);
  EXPECT_EQ(Conversations(), 2u) << "the probe's link was not closed";
}

TEST_F(Session, ChecksWithoutAMessageWhenNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(Check(), 0);
  EXPECT_STREQ(version, "untouched");
  EXPECT_STREQ(extra, "extra");
  EXPECT_THAT(app.Boxes(), IsEmpty());
}

TEST_F(Session, ClosesAfterACheckWhoseVersionQueryFailed) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "$SYVER=1.00", Silence()});
  EXPECT_EQ(Check(), 0);
  EXPECT_STREQ(version, "untouched");
  controller.LooksLikeAMount();
  EXPECT_EQ(Check(), 1);
  EXPECT_EQ(Conversations(), 2u);
}

TEST_F(Session, CountsAnEmptyVersionAsNone) {
  controller.Answers("$SYVER?", "$SYVER=");
  EXPECT_EQ(Check(), 0);
  EXPECT_STREQ(version, "untouched");
  EXPECT_STREQ(extra, "extra");
}

TEST_F(Session, CutsTheVersionToTheCallersBuffer) {
  controller.Answers("$SYVER?", "$SYVER=12.345");
  char small[4] = {'a', 'b', 'c', 'd'};
  EXPECT_EQ(telescope.Check(nullptr, controller.Address().c_str(), small, 3, extra), 1);
  EXPECT_STREQ(small, "12");
  EXPECT_EQ(small[3], 'd');
  EXPECT_EQ(telescope.Check(nullptr, controller.Address().c_str(), small, 1, extra), 1);
  EXPECT_STREQ(small, "");
  EXPECT_EQ(small[1], '2');
}

TEST_F(Session, ChecksForACallerWhoWantsNoTexts) {
  EXPECT_EQ(telescope.Check(nullptr, controller.Address().c_str(), nullptr, 10, nullptr), 1);
  EXPECT_EQ(telescope.Check(nullptr, controller.Address().c_str(), version, 0, nullptr), 1);
  EXPECT_STREQ(version, "untouched");
}

TEST_F(Session, TakesTheOwnerOfACheck) {
  telescope.Check(Window(0x30), controller.Address().c_str(), version, sizeof version, extra);
  EXPECT_EQ(telescope.OwnerWindow(), Window(0x30));
  EXPECT_EQ(probe.Address(), controller.Address());
}

// --- End ---------------------------------------------------------------------------------------

TEST_F(Session, EndsItsWorkerAndTheLink) {
  StartSession();
  EXPECT_EQ(telescope.End(), 1);
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_EQ(telescope.OwnerWindow(), nullptr);
  controller.Clear();
  EXPECT_EQ(telescope.OnPoll(), 1);  // a poll on a closed link
  EXPECT_THAT(controller.Commands(), IsEmpty());
}

TEST_F(Session, EndsWhenNothingWasStarted) {
  EXPECT_EQ(telescope.End(), 1);
  EXPECT_EQ(telescope.End(), 1);
  EXPECT_THAT(probe.Queue(), IsEmpty());
  EXPECT_EQ(Connect(), 1);
}

TEST_F(Session, EndsAfterAStartThatFailedAndStartsAgain) {
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(Connect(), 0);
  EXPECT_EQ(telescope.End(), 1);
  EXPECT_THAT(probe.Queue(), IsEmpty()) << "there is no session to close";
  controller.LooksLikeAMount();
  EXPECT_EQ(Connect(), 1);
}

TEST_F(Session, PerformsWhatWasQueuedBeforeItsEnd) {
  StartSession();
  telescope.Home();
  telescope.AlignReset();
  telescope.End();
  EXPECT_THAT(Requests(), ElementsAre("$MTTGT=1,270.000000,0.000000,Home", "$ALINI=0"));
}

TEST_F(Session, LeavesTheBusyFlagAfterItsEnd) {
  StartSession();
  ASSERT_TRUE(Idle());
  EXPECT_EQ(telescope.GetBusy(), 0);
  telescope.End();
  EXPECT_EQ(telescope.GetBusy(), 1);
}

TEST_F(Session, EndsOnlyAfterTheUserHasAnsweredTheWorkersBox) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  auto end = Meanwhile([this] { return telescope.End(); });
  EXPECT_EQ(end.wait_for(100ms), std::future_status::timeout);
  app.Answer();
  ASSERT_EQ(end.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(end.get(), 1);
}

TEST_F(Session, RefusesAStartAndAnswersACheckAtOnceWhileItEnds) {
  app.Hold();
  StartSession();
  telescope.Look(nullptr);
  ASSERT_TRUE(app.WaitForBoxes(1, kSoon));
  auto end = Meanwhile([this] { return telescope.End(); });
  ASSERT_TRUE(Eventually([this] { return telescope.GetConnected() == 0; }, kSoon));
  auto start = Meanwhile([this] { return Connect(); });
  auto check = Meanwhile([this] { return Check(); });
  EXPECT_EQ(start.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(check.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(end.wait_for(0ms), std::future_status::timeout);
  app.Answer();
  end.get();
  EXPECT_EQ(start.get(), 0);
  EXPECT_EQ(check.get(), 1);
}

TEST_F(Session, StartsAgainWithWhatTheLastOneKnew) {
  controller.Status("60000.5,2,0,0,0,91.0,10,20,6.0,22.5,4");
  telescope.SetName("Scope");
  telescope.SetVendor("Vendor");
  const double target[2] = {10.0, 20.0};
  telescope.SetPos(target);
  StartSession();
  ASSERT_EQ(telescope.GetSlewing(), 1);
  telescope.GetEastWest();
  telescope.Slew(TELESCOPE_NORTH, 1, 3);
  ASSERT_TRUE(Idle());
  telescope.End();

  controller.Answers("$MTSTA?", "$WRONG=1");
  controller.Clear();
  ASSERT_EQ(Connect(), 1);
  ASSERT_TRUE(PollsAgain());
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 1);
  EXPECT_THAT(radec, ElementsAre(90.0, 22.5));
  EXPECT_EQ(telescope.GetSlewing(), 1);
  EXPECT_EQ(telescope.GetParking(), 1);
  EXPECT_EQ(telescope.GetTargetValid(), 1);
  EXPECT_EQ(probe.StoredEastWest(), 1);
  EXPECT_EQ(rhythm.FastPoll(), 1);
  EXPECT_EQ(probe.Name(), "Scope");
  EXPECT_EQ(probe.Vendor(), "Vendor");
  telescope.Look(nullptr);
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Requests(), Contains("$MTTGT=3,0.666667,20.000000,"));
}

// --- Journal -----------------------------------------------------------------------------------

TEST_F(Session, WritesTheJournalAtItsEnd) {
  WriteJournalsAs("scope1");
  controller.IsSilentTo("$ALINI=0");
  StartSession();
  telescope.AlignReset();
  ASSERT_TRUE(Idle());
  EXPECT_THAT(Journals(), IsEmpty());
  telescope.End();
  ASSERT_THAT(Journals(), SizeIs(1));
  EXPECT_THAT(Journals()[0], HasSubstr(" $ALINI=0 : TimeOut"));
  const std::string name =
      std::filesystem::directory_iterator(folder.Path())->path().filename().string();
  EXPECT_THAT(name, StartsWith("scope1_timeouterr_korvelwireless_"));
}

TEST_F(Session, RepeatsTheJournalAtEveryEnd) {
  controller.AnswersOnce("$ALINI=0", Silence());
  StartSession();
  telescope.AlignReset();
  ASSERT_TRUE(Idle());
  for (const char* prefix : {"1", "2", "3"}) {  // the third End has no session
    WriteJournalsAs(prefix);
    telescope.End();
    if (*prefix == '1') {
      ASSERT_EQ(Connect(), 1);
    }
  }
  ASSERT_THAT(Journals(), SizeIs(3));
  EXPECT_THAT(Journals()[0], HasSubstr("$ALINI=0 : TimeOut"));
  EXPECT_EQ(Journals()[1], Journals()[0]);
  EXPECT_EQ(Journals()[2], Journals()[0]);
}

TEST_F(Session, WritesNoJournalWhenNothingFailed) {
  WriteJournalsAs("scope1");
  StartSession();
  telescope.End();
  EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(Session, EndsThoughTheJournalCannotBeNamed) {
  WriteJournalsAs("scope1");
  controller.AnswersOnce("$ALINI=0", Silence());
  StartSession();
  telescope.AlignReset();
  ASSERT_TRUE(Idle());
  platformCalls.HasNoLocalTime();
  EXPECT_EQ(telescope.End(), 1);
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_THAT(Journals(), IsEmpty());
}

TEST_F(Session, WritesTheJournalWhileExchangesFail) {
  // The journal is written before the worker is asked to end, so the list may grow meanwhile.
  WriteJournalsAs("scope1");
  controller.Answers("$MTTGT=", "$WRONG=1");  // answers under a foreign key leave a record each
  for (int round = 0; round < 20; ++round) {
    for (int i = 0; i < 50; ++i) telescope.Home();
    ASSERT_EQ(Connect(), 1);
    telescope.End();
  }
  for (const std::string& journal : Journals()) {
    EXPECT_THAT(journal, Not(HasSubstr(std::string(1, '\0'))));
    EXPECT_THAT(journal, testing::EndsWith("Mismatch" +
#ifdef _WIN32
                                           std::string("\r\n")));
#else
                                           std::string("\n")));
#endif
  }
}

}  // namespace
