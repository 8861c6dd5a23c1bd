// SPDX-License-Identifier: MIT
// The messages to the user on a system that cannot show Japanese, as they stand on the screen.
#include <future>

#include "tests/library/dll/driver_fixture.h"

namespace {

using testing::ElementsAre;

constexpr double kTarget[2] = {83.633, 22.0145};

// The texts without their line breaks.
const wchar_t* const kNoResponse =
    L"The telescope does not answer.Check the port settings, the cables and the power.";
const wchar_t* const kBelowHorizon = L"The object is below the horizon.";
const wchar_t* const kRefused =
    L"The command was not accepted.If a goto is under way, try again when it is done.";

class EnglishMessages : public DriverTest {
 protected:
  void SetUp() override { ASSERT_EQ(GetACP(), 1252u) << "these tests run on an English system"; }

  // Checks the box that must come up and presses its button.
  void AnswerBox(const wchar_t* title, const wchar_t* text) {
    const auto box = WaitForMessageBox(kSoon);
    ASSERT_TRUE(box);
    EXPECT_EQ(box->title, title);
    EXPECT_EQ(box->text, text);
    EXPECT_THAT(box->buttons, ElementsAre(L"OK"));
    EXPECT_TRUE(PressOk(*box));
  }
};

TEST_F(EnglishMessages, SayThatNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  auto start = std::async(std::launch::async, [this] { return Start(); });
  AnswerBox(L"VELQUIN", kNoResponse);
  EXPECT_EQ(start.get(), 0);
}

TEST_F(EnglishMessages, CarryTheHostsNameInTheSystemsCodePage) {
  driver.SetName(nullptr, "T\xe9lescope");
  controller.IsSilentTo("$SYVER?");
  auto start = std::async(std::launch::async, [this] { return Start(); });
  AnswerBox(L"T\u00e9lescope", kNoResponse);
  EXPECT_EQ(start.get(), 0);
}

TEST_F(EnglishMessages, SayThatTheTargetIsBelowTheHorizon) {
  controller.Answers("$MTTGT=", "$MTTGT=BELOWHORIZON");
  StartSession();
  EXPECT_EQ(driver.Look(nullptr, kTarget), 1);
  AnswerBox(L"VELQUIN", kBelowHorizon);
  EXPECT_TRUE(PollsAgain());
}

TEST_F(EnglishMessages, SayThatThereIsNoTarget) {
  StartSession();
  driver.Look(nullptr, nullptr);
  AnswerBox(L"VELQUIN", kRefused);
}

}  // namespace
