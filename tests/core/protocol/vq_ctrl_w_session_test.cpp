// SPDX-License-Identifier: MIT
// Opening and closing a session, the version, the journal and the device log.
#include <filesystem>
#include <memory>
#include <new>
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/pattern.h"
#include "tests/support/temp_folder.h"

namespace {

using simulator::ScriptedController;
using simulator::Silence;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

using Session = MountSession;

// --- Opening -------------------------------------------------------------------------------------

TEST_F(Session, HoldsNothingAtFirst) {
  EXPECT_FALSE(UdpLinkProbe(probe.Link()).Connected());
  EXPECT_EQ(probe.Version(), "");
  EXPECT_EQ(probe.Host(), "");
  EXPECT_EQ(probe.Port(), 0);
  EXPECT_EQ(probe.OpenArg(), 0);
  EXPECT_EQ(probe.ModelA(), 0);
  EXPECT_EQ(probe.ModelB(), 0.0);
  EXPECT_EQ(probe.ModelC(), 0.0);
  EXPECT_EQ(probe.HandSpeed(), 1);
  EXPECT_EQ(probe.FineQuery(), 0);
  EXPECT_EQ(probe.PierSide(), 0);
  EXPECT_EQ(probe.Unparked(), 0);
  EXPECT_EQ(probe.ControllerMjd(), -1.0);
  EXPECT_EQ(probe.RaDegrees(), 0.0);
  EXPECT_EQ(probe.DecDegrees(), 0.0);
  EXPECT_EQ(probe.StatusF6(), 0.0);
  EXPECT_EQ(probe.StatusF7(), 0.0);
}

TEST_F(Session, IdentifiesTheController) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "$SYVER=2.10 second"});
  EXPECT_EQ(Open(), 1);
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?"));
  EXPECT_EQ(probe.Version(), "$SYVER=2.10 second") << "the whole second answer";
  EXPECT_EQ(probe.ModelA(), 1);
  EXPECT_EQ(probe.ModelB(), 2.5);
  EXPECT_EQ(probe.ModelC(), 3.0);
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(Session, TalksToTheControllersPortWhateverPortIsGiven) {
  EXPECT_EQ(session.Open(controller.Address().c_str(), 80, 7), 1);
  EXPECT_EQ(UdpLinkProbe(probe.Link()).RemotePort(), 60023);
  EXPECT_EQ(probe.Host(), controller.Address());
  EXPECT_EQ(probe.Port(), 80);
  EXPECT_EQ(probe.OpenArg(), 7);
}

TEST_F(Session, WaitsHalfASecondForReplies) {
  probe.Link().SetTimeOut(9000);
  ASSERT_EQ(Open(), 1);
  EXPECT_EQ(UdpLinkProbe(probe.Link()).TimeOut().seconds, 0);
  EXPECT_EQ(UdpLinkProbe(probe.Link()).TimeOut().microseconds, 500000);
}

TEST_F(Session, DoesNotOpenInSilence) {
  controller.IsSilentTo("$SYVER?");
  patience.End();
  EXPECT_EQ(Open(), 0);
  ASSERT_TRUE(controller.WaitFor("$SYVER?", kDeadlineMs));
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?"));
  EXPECT_THAT(Records(), ElementsAre("$SYVER? : TimeOut"));
  EXPECT_THAT(app.boxes, IsEmpty()) << "telling the user is the caller's business";
}

TEST_F(Session, DoesNotOpenOnASecondSpelling) {
  controller.Answers("$SYVER?", "$syver=1.00");
  EXPECT_EQ(Open(), 0);
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?"));
}

TEST_F(Session, DoesNotOpenForAnUnknownHost) {
  faults.lookUpHost = [](const std::string&, uint32_t&) { return false; };
  EXPECT_EQ(session.Open("no.such.host.invalid", 80, 0), 0);
  EXPECT_EQ(probe.Host(), "no.such.host.invalid");
  EXPECT_THAT(Records(), IsEmpty());
}

TEST_F(Session, IsOpenWhenTheSecondVersionQueryIsLost) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "$SYVER=1.00", "$SYVER=2.00", Silence()});
  controller.AnswersInTurn("$MTMDL?", {"$MTMDL=1,2.5,3.0", "$MTMDL=4,5,6"});
  ASSERT_EQ(Open(), 1);
  session.Close();
  Sent();
  patience.For(1);
  EXPECT_EQ(Open(), 1);
  ASSERT_TRUE(controller.WaitForCount("$SYVER?", 2, kDeadlineMs));
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?", "$SYVER?")) << "the model is not asked";
  EXPECT_EQ(probe.Version(), "$SYVER=1.00") << "unchanged";
  EXPECT_EQ(probe.ModelA(), 1);
  EXPECT_TRUE(UdpLinkProbe(probe.Link()).Connected());
}

TEST_F(Session, DoesNotLookAtThePrefixOfTheSecondVersionReply) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "whatever"});
  EXPECT_EQ(Open(), 1);
  EXPECT_EQ(probe.Version(), "whatever");
}

// --- The model -----------------------------------------------------------------------------------

TEST_F(Session, SkipsSevenCharactersOfTheModelUnread) {
  controller.Answers("$MTMDL?", "1234567 8 , 9.5,-10.25 ");
  EXPECT_EQ(Open(), 1);
  EXPECT_EQ(probe.ModelA(), 8);
  EXPECT_EQ(probe.ModelB(), 9.5);
  EXPECT_EQ(probe.ModelC(), -10.25);
}

TEST_F(Session, NeedsThreeFieldsOfTheModel) {
  for (const char* model :
       {"$MTMDL=1,2.5", "$MTMDL=1,2.5,3.0,4", "$MTMDL=", "$MTMDL=1,2.5,", "1,2,3", "$M"}) {
    controller.Answers("$MTMDL?", model);
    EXPECT_EQ(Open(), 0) << model;
    EXPECT_EQ(probe.Version(), "$SYVER=1.00") << "was read before";
    session.Close();
  }
  EXPECT_EQ(probe.ModelA(), 0);
}

TEST_F(Session, DoesNotOpenWithoutAModel) {
  controller.IsSilentTo("$MTMDL?");
  patience.For(2);
  EXPECT_EQ(Open(), 0);
  ASSERT_TRUE(controller.WaitFor("$MTMDL?", kDeadlineMs));
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?"));
}

// --- Closing and opening again -------------------------------------------------------------------

TEST_F(Session, StaysConnectedWhenOpeningFails) {
  controller.Answers("$MTMDL?", "$MTMDL=1");
  EXPECT_EQ(Open(), 0);
  EXPECT_TRUE(UdpLinkProbe(probe.Link()).Connected());
  EXPECT_EQ(session.GetVersion(reply, reply), 1);
  session.Close();
  EXPECT_FALSE(UdpLinkProbe(probe.Link()).Connected());
}

TEST_F(Session, StaysConnectedToWhomeverIsNoController) {
  controller.Answers("$SYVER?", "no controller");
  EXPECT_EQ(Open(), 0);
  EXPECT_TRUE(UdpLinkProbe(probe.Link()).Connected());
  EXPECT_EQ(session.StopMotion(reply), 1);
}

TEST_F(Session, UsesTheOldConnectionWhileItIsNotClosed) {
  ASSERT_EQ(probe.Link().SetTimeOut(3000), 1);
  Connect();
  controller.Answers("$MTMDL?", "$MTMDL=1");
  ASSERT_EQ(Open(), 0);
  Sent();
  controller.Answers("$MTMDL?", "$MTMDL=4,5,6");
  EXPECT_EQ(session.Open("192.0.2.1", 81, 3), 1);
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?", "$SYVER?", "$MTMDL?"));
  EXPECT_EQ(probe.Host(), "192.0.2.1");
  EXPECT_EQ(probe.Port(), 81);
  EXPECT_EQ(probe.OpenArg(), 3);
  EXPECT_EQ(probe.ModelA(), 4);
  EXPECT_EQ(UdpLinkProbe(probe.Link()).TimeOut().seconds, 3) << "the time-out is the old one too";
}

TEST_F(Session, MayBeClosedWhenItIsNotOpen) {
  session.Close();
  session.Close();
  EXPECT_EQ(Open(), 1);
}

TEST_F(Session, AnswersNothingWhileClosed) {
  EXPECT_EQ(session.StopMotion(reply), 0);
  EXPECT_EQ(Reply(), "");
  EXPECT_THAT(controller.Commands(), IsEmpty());
  EXPECT_THAT(Records(), IsEmpty());
}

TEST(SessionLife, ClosesTheLinkInTheEnd) {
  PlatformFaults faults;
  {
    CVQCtrlW session;
    ASSERT_EQ(VQCtrlProbe(session).Link().Open("127.0.0.1", 60099), 1);
  }
  EXPECT_EQ(faults.socketsClosed, 1);
  EXPECT_EQ(faults.socketsStarted, faults.socketsStopped);
}

// --- The version ---------------------------------------------------------------------------------

class Version : public MountSession {
 protected:
  Version() { Connect(); }
  CString version = "untouched";
};

TEST_F(Version, IsTheTextBehindThePrefix) {
  controller.Answers("$SYVER?", "$SYVER=1.00, build 7");
  EXPECT_EQ(session.GetVersion(version, reply), 1);
  EXPECT_STREQ(version, "1.00, build 7");
  EXPECT_EQ(Reply(), "$SYVER=1.00, build 7");
  EXPECT_THAT(Sent(), ElementsAre("$SYVER?"));
}

TEST_F(Version, MayComeUnderAPrefixInSmallLetters) {
  controller.Answers("$SYVER?", "$syver=2.10");
  EXPECT_EQ(session.GetVersion(version, reply), 1);
  EXPECT_STREQ(version, "2.10");
}

TEST_F(Version, MayBeEmpty) {
  controller.Answers("$SYVER?", "$SYVER=");
  EXPECT_EQ(session.GetVersion(version, reply), 1);
  EXPECT_STREQ(version, "");
}

TEST_F(Version, StaysUntouchedByAnythingElse) {
  controller.AnswersInTurn("$SYVER?", {"$SYVER", "$SYVES=1", "1.00", simulator::Raw("\r\n"),
                                       simulator::Raw("$SYVER=1.00")});
  for (int i = 0; i < 5; ++i) EXPECT_EQ(session.GetVersion(version, reply), 0) << i;
  EXPECT_STREQ(version, "untouched");
  EXPECT_EQ(Reply(), "");
}

// --- The journal ---------------------------------------------------------------------------------

class SessionJournal : public MountSession {
 protected:
  void WriteAt(int second) {
    faults.localTime = [second](int64_t, std::tm& local) {
      local = {};
      local.tm_year = 124;
      local.tm_mon = 2;
      local.tm_mday = 5;
      local.tm_sec = second;
      return true;
    };
    const std::string path =
        folder.Narrow() + static_cast<char>(std::filesystem::path::preferred_separator);
    session.WriteTimeOutErrors(path.c_str(), "scope1");
  }
  /// @return the lines of the journal written in that second, without line ends.
  std::vector<std::string> Lines(int second) const {
    const std::string name =
        "scope1_timeouterr_korvelwireless_20240305_00000" + std::to_string(second) + ".txt";
    const std::string text = ReadWholeFile(folder / name).value_or("(no such file)\n");
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end = 0; (end = text.find('\n', start)) != std::string::npos; start = end + 1) {
      lines.push_back(text.substr(start, end - start));
      if (lines.back().ends_with('\r')) lines.back().pop_back();
    }
    return lines;
  }

  TempFolder folder;
};

TEST_F(SessionJournal, TellsWhatFailedAndRepeatsItEveryTime) {
  faults.processClockMs = [] { return 3723900; };
  controller.Answers("$MTSTP=1", "$ALIGN=1");
  controller.IsSilentTo("$MTINI=1");
  Connect();
  session.StopMotion(reply);
  WriteAt(1);
  patience.End();
  session.InitMount(reply);
  session.Close();
  WriteAt(2);
  WriteAt(3);
  const std::string mismatch = "01:02:03 $MTSTP=1 : Return Value Mismatch";
  const std::string silence = "01:02:03 $MTINI=1 : TimeOut";
  EXPECT_THAT(Lines(1), ElementsAre(mismatch));
  EXPECT_THAT(Lines(2), ElementsAre(mismatch, silence));
  EXPECT_THAT(Lines(3), ElementsAre(mismatch, silence));
}

TEST_F(SessionJournal, IsNotWrittenWhenNothingFailed) {
  ASSERT_EQ(Open(), 1);
  WriteAt(1);
  EXPECT_TRUE(std::filesystem::is_empty(folder.Path()));
}

// --- The device log ------------------------------------------------------------------------------

class SessionLog : public testing::Test {
 protected:
  SessionLog() {
    faults.userSetting = [this](const std::string& key, const std::string& value,
                                std::string& text) {
      EXPECT_EQ(key, "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting");
      EXPECT_EQ(value, "DeviceLogWrite");
      text = setting;
      return true;
    };
    faults.localAppData = [this](std::wstring& path) {
      path = folder.Wide();
      return true;
    };
  }

  std::filesystem::path File() const {
    return folder / "Halvorn" / "Ambrix" / "3.0" / "velquin.log";
  }
  /// @return what stands behind time and thread in every line.
  std::vector<std::string> Events() const {
    std::string text = ReadWholeFile(File()).value_or("(no such file)\n");
    text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
    std::vector<std::string> events;
    for (const auto& line : PatternPlaces(text, "[-0-9]+T[0-9:.]+:[0-9]+:([^\n]*)\n")) {
      events.push_back(line[1]);
    }
    return events;
  }

  PlatformFaults faults;
  Patience patience{faults};
  TempFolder folder;
  std::string setting = "yes";
};

TEST_F(SessionLog, HasALineForEveryOpenAndClose) {
  ScriptedController controller;
  controller.LooksLikeAMount();
  {
    CVQCtrlW session;
    EXPECT_TRUE(VQCtrlProbe(session).HasLogger());
    EXPECT_THAT(Events(), IsEmpty());
    ASSERT_EQ(session.Open(controller.Address().c_str(), 80, 0), 1);
    EXPECT_THAT(Events(), ElementsAre("INFO:Open:"));
    session.Close();
    controller.Answers("$SYVER?", "no controller");
    ASSERT_EQ(session.Open(controller.Address().c_str(), 80, 0), 0);
    EXPECT_THAT(Events(), ElementsAre("INFO:Open:", "INFO:Close", "INFO:Open:"))
        << "failures are not logged";
  }
  EXPECT_THAT(Events(), ElementsAre("INFO:Open:", "INFO:Close", "INFO:Open:", "INFO:Close"))
      << "the end closes too";
}

TEST_F(SessionLog, HasALineForACloseOfNothing) {
  CVQCtrlW session;
  session.Close();
  EXPECT_THAT(Events(), ElementsAre("INFO:Close"));
  session.Close();
  EXPECT_THAT(Events(), ElementsAre("INFO:Close", "INFO:Close"));
}

TEST_F(SessionLog, IsOffUnlessTheHostSwitchedItOn) {
  setting = "no";
  CVQCtrlW session;
  EXPECT_FALSE(VQCtrlProbe(session).HasLogger());
  session.Close();
  EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(SessionLog, IsOffWhenTheFileCannotBeMade) {
  WriteWholeFile(folder / "Halvorn", "in the way");
  CVQCtrlW session;
  EXPECT_FALSE(VQCtrlProbe(session).HasLogger());
  session.Close();
}

// The worker closes the link last, and nobody would catch what it throws.
TEST_F(SessionLog, ClosesTheLinkThoughThereIsNoMemoryForALine) {
  ScriptedController controller;
  controller.LooksLikeAMount();
  CVQCtrlW session;
  ASSERT_EQ(session.Open(controller.Address().c_str(), 80, 0), 1);
  faults.localTime = [](int64_t, std::tm&) -> bool { throw std::bad_alloc(); };
  EXPECT_NO_THROW(session.Close());
  EXPECT_EQ(faults.socketsClosed, 1);
  faults.localTime = nullptr;
  EXPECT_THAT(Events(), ElementsAre("INFO:Open:"));
}

TEST_F(SessionLog, IsDecidedOnceForTheLifeOfASession) {
  setting = "no";
  ScriptedController controller;
  controller.LooksLikeAMount();
  CVQCtrlW session;
  setting = "yes";
  ASSERT_EQ(session.Open(controller.Address().c_str(), 80, 0), 1);
  EXPECT_FALSE(VQCtrlProbe(session).HasLogger());
}

}  // namespace
