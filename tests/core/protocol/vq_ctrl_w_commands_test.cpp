// SPDX-License-Identifier: MIT
// All commands side by side: the bytes on the wire, and which answers count as success.
#include <functional>
#include <ostream>
#include <string>

#include "tests/core/protocol/mount_session_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr double kPosition[2] = {83.633, 22.0145};  // degrees: right ascension, declination
constexpr double kSite[2] = {35.681, 139.767};      // degrees: latitude, longitude

struct Command {
  const char* name;
  const char* bytes;         ///< without the line end
  const char* answerPrefix;  ///< null when every answer is success
  const char* value;         ///< of a good answer
  std::function<int(CVQCtrlW&, CString& reply)> send;
};

void PrintTo(const Command& command, std::ostream* stream) {
  *stream << command.bytes;
}

int GetVersion(CVQCtrlW& session, CString& reply) {
  CString version;
  return session.GetVersion(version, reply);
}

int GetLocation(CVQCtrlW& session, CString& reply) {
  double site[2];
  int32_t zone = 0;
  return session.GetLocation(site, &zone, reply);
}

int GetUtcTime(CVQCtrlW& session, CString& reply) {
  SiteTime time = {};
  return session.GetUtcTime(time, reply);
}

const Command kCommands[] = {
    {"GetVersion", "$SYVER?", "$SYVER=", "1.00", GetVersion},
    {"Goto", "$MTTGT=3,5.575533,22.014500,M1", "$MTTGT=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.Goto(3, kPosition, "M1", reply); }},
    {"GotoHome", "$MTTGT=1,270.000000,0.000000,Home", "$MTTGT=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.GotoHome(reply); }},
    {"GotoPark", "$MTTGT=2,0.000000,0.000000,Park", "$MTTGT=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.GotoPark(reply); }},
    {"GotoStar", "$MTTGT=3,0.000000,0.000000,Star", "$MTTGT=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.GotoStar(reply); }},
    {"Align", "$ALIGN=3,5.575533,22.014500,", "$ALIGN=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.Align(kPosition, 3, "", reply); }},
    {"ResetAlign", "$ALINI=0", nullptr, "1",
     [](CVQCtrlW& session, CString& reply) { return session.ResetAlign(reply); }},
    {"StopMotion", "$MTSTP=1", "$MTSTP=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.StopMotion(reply); }},
    {"HandMove", "$MTMV2=1.000000,0.000000,0.000000", "$MTMV2=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.HandMove(0, 0, 0, 0, reply); }},
    {"TimedMove", "$MTMV2=0.250000,-0.500000,0.000000", "$MTMV2=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.TimedMove(250.0, -0.5, 0.0, reply); }},
    {"SendGuideSpeed", "$MTAGS=0.500000,0.250000", "$MTAGS=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.SendGuideSpeed(0.5, 0.25, reply); }},
    {"SetMeridian", "$MTCOM=0.000000,3.000000", "$MTGTS=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.SetMeridian(0.0, 3.0, reply); }},
    {"SetGtsValue", "$MTGTS=5", "$MTGTS=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.SetGtsValue(5, reply); }},
    {"InitMount", "$MTINI=1", "$MTINI=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.InitMount(reply); }},
    {"SetLocation", "$SYLOC= 139.767, 35.681,9", "$SYLOC=", "1",
     [](CVQCtrlW& session, CString& reply) { return session.SetLocation(kSite, 9, reply); }},
    {"GetLocation", "$SYLOC?", "$SYLOC=", "139.767,35.681,9", GetLocation},
    {"SetLocalTime", "$SYLTM=2024,03,05,21,07,00.0", "$SYLTM=", "1",
     [](CVQCtrlW& session, CString& reply) {
       return session.SetLocalTime({2024, 3, 5, 21, 7, 9.0, 9.0}, reply);
     }},
    {"GetUtcTime", "$SYUTM?", "$SYUTM=", "2024,3,5,12,7,9", GetUtcTime},
};

class AnyCommand : public MountSession, public testing::WithParamInterface<Command> {
 protected:
  int Send() { return GetParam().send(session, reply); }
  std::string Answer() const {
    const char* prefix = GetParam().answerPrefix;
    return std::string(prefix == nullptr ? "$ALINI=" : prefix) + GetParam().value;
  }
  /// What an answer that is not the right one leads to.
  int Failure() const { return GetParam().answerPrefix == nullptr ? 1 : 0; }
};

TEST_P(AnyCommand, IsOneDatagramOfOneLine) {
  Connect();
  Send();
  ASSERT_EQ(controller.Received().size(), 1u);
  EXPECT_EQ(controller.Received()[0].bytes, std::string(GetParam().bytes) + "\r\n");
}

TEST_P(AnyCommand, SucceedsWithTheRightPrefixInAnyCase) {
  Connect();
  std::string small = Answer();
  for (char& c : small) c = static_cast<char>(std::tolower(c));
  controller.AnswersInTurn(GetParam().bytes, {Answer(), small});
  EXPECT_EQ(Send(), 1);
  EXPECT_EQ(Reply(), Answer());
  EXPECT_EQ(Send(), 1);
  EXPECT_EQ(Reply(), small);
}

TEST_P(AnyCommand, FailsWithAnotherAnswerAndHandsItBack) {
  Connect();
  std::string colon = Answer();
  colon[6] = ':';
  std::string otherKey = Answer();
  otherKey[3] = 'Z';
  const std::vector<std::string> wrong = {colon, otherKey, Answer().substr(1),
                                          Answer().substr(0, 6), " " + Answer()};
  controller.AnswersInTurn(GetParam().bytes, {wrong.begin(), wrong.end()});
  for (const std::string& answer : wrong) {
    EXPECT_EQ(Send(), Failure()) << answer;
    EXPECT_EQ(Reply(), answer);
  }
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_P(AnyCommand, FailsInSilenceOnceAndQuietly) {
  Connect();
  controller.IsSilentTo(GetParam().bytes);
  patience.End();
  EXPECT_EQ(Send(), Failure());
  EXPECT_EQ(Reply(), "");
  ASSERT_TRUE(controller.WaitFor(GetParam().bytes, kDeadlineMs));
  EXPECT_THAT(Sent(), ElementsAre(GetParam().bytes)) << "nothing is sent again";
  EXPECT_THAT(Records(), ElementsAre(std::string(GetParam().bytes) + " : TimeOut"));
  EXPECT_THAT(app.boxes, IsEmpty());
}

TEST_P(AnyCommand, FailsWhileClosed) {
  EXPECT_EQ(Send(), Failure());
  EXPECT_EQ(Reply(), "");
  EXPECT_THAT(Records(), IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Table, AnyCommand, testing::ValuesIn(kCommands),
                         [](const auto& test) { return test.param.name; });

TEST_F(MountSession, AsksForTheStatusInOneLine) {
  Connect();
  int32_t state = 0;
  session.ReadStatus(nullptr, &state, nullptr);
  ASSERT_EQ(controller.Received().size(), 1u);
  EXPECT_EQ(controller.Received()[0].bytes, "$MTSTA?\r\n");
}

TEST_F(MountSession, AsksForVersionAndModelInOneLineEach) {
  ASSERT_EQ(Open(), 1);
  const auto received = controller.Received();
  ASSERT_EQ(received.size(), 3u);
  EXPECT_EQ(received[0].bytes, "$SYVER?\r\n");
  EXPECT_EQ(received[1].bytes, "$SYVER?\r\n");
  EXPECT_EQ(received[2].bytes, "$MTMDL?\r\n");
}

}  // namespace
