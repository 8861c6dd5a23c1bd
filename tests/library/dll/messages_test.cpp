// SPDX-License-Identifier: MIT
// The messages to the user, as they stand on the screen.
#include <future>

#include "tests/library/dll/driver_fixture.h"

namespace {

using namespace std::chrono_literals;
using testing::SizeIs;

constexpr double kTarget[2] = {83.633, 22.0145};

// The texts without their line breaks.
const wchar_t* const kNoResponse =
    L"望遠鏡から応答がありません。ポートの設定やケーブルの接続、電源の状態を確認してください。";
const wchar_t* const kBelowHorizon = L"天体が地平線下です。";
const wchar_t* const kRefused =
    L"コマンドが受け付けられませんでした。導入中の場合は、導入完了後に再度コマンドを実行してくださ"
    L"い。";

class Messages : public DriverTest {
 protected:
  // Checks the box that must come up and presses its button.
  void AnswerBox(const wchar_t* title, const wchar_t* text) {
    const auto box = WaitForMessageBox(kSoon);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->title, title);
    EXPECT_EQ(box->text, text);
    EXPECT_THAT(box->buttons, SizeIs(1));
    EXPECT_EQ(box->buttons.at(0), L"OK");
    EXPECT_TRUE(PressOk(*box));
  }
  std::future<int32_t> StartMeanwhile() {
    return std::async(std::launch::async, [this] { return Start(); });
  }
};

TEST_F(Messages, SayThatNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  auto start = StartMeanwhile();
  const auto box = WaitForMessageBox(kSoon);
  ASSERT_TRUE(box);
  EXPECT_EQ(start.wait_for(100ms), std::future_status::timeout) << "the call waits for the user";
  AnswerBox(L"VELQUIN", kNoResponse);
  ASSERT_EQ(start.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(start.get(), 0);
  EXPECT_FALSE(FindMessageBox());
  controller.LooksLikeAMount();
  EXPECT_EQ(Start(), 1);
}

TEST_F(Messages, CarryTheHostsNameFromTheNextStartOn) {
  // "Telescope" in Japanese, in code page 932.
  driver.SetName(nullptr, "\x96\x5d\x89\x93\x8b\xbe");
  controller.IsSilentTo("$SYVER?");
  auto start = StartMeanwhile();
  AnswerBox(L"望遠鏡", kNoResponse);
  EXPECT_EQ(start.get(), 0);
}

TEST_F(Messages, KeepTheirTitleUntilTheNextStart) {
  StartSession();
  driver.SetName(nullptr, "Scope");
  driver.Look(nullptr, nullptr);
  AnswerBox(L"VELQUIN", kRefused);
  driver.End(nullptr);
  ASSERT_EQ(Start(), 1);
  driver.Look(nullptr, nullptr);
  AnswerBox(L"Scope", kRefused);
}

TEST_F(Messages, SayThatTheTargetIsBelowTheHorizonAndHoldTheWorkerMeanwhile) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  StartSession();
  EXPECT_EQ(driver.Look(nullptr, kTarget), 1);
  ASSERT_TRUE(WaitForMessageBox(kSoon));
  controller.Clear();
  EXPECT_FALSE(controller.WaitFor("$MTSTA?", 300)) << "the worker waits for the user";
  // The host is not held up.
  double radec[2];
  EXPECT_EQ(driver.GetPos(nullptr, radec), 1);
  AnswerBox(L"VELQUIN", kBelowHorizon);
  EXPECT_TRUE(PollsAgain());
}

TEST_F(Messages, SayThatThereIsNoTargetAndGoOn) {
  StartSession();
  driver.Look(nullptr, nullptr);
  driver.Home(nullptr);
  AnswerBox(L"VELQUIN", kRefused);
  EXPECT_THAT(Sent(), testing::ElementsAre("$MTTGT=1,270.000000,0.000000,Home\r\n"));
}

TEST_F(Messages, AreNotShownForAHomePositionBelowTheHorizon) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  StartSession();
  driver.Home(nullptr);
  EXPECT_THAT(Sent(), SizeIs(1));
  EXPECT_FALSE(FindMessageBox());
}

TEST_F(Messages, MustBeAnsweredBeforeTheSessionEnds) {
  StartSession();
  driver.Look(nullptr, nullptr);
  ASSERT_TRUE(WaitForMessageBox(kSoon));
  auto end = std::async(std::launch::async, [this] { return driver.End(nullptr); });
  EXPECT_EQ(end.wait_for(200ms), std::future_status::timeout);
  AnswerBox(L"VELQUIN", kRefused);
  ASSERT_EQ(end.wait_for(kSoon), std::future_status::ready);
  EXPECT_EQ(end.get(), 1);
}

}  // namespace
