// SPDX-License-Identifier: MIT
#include "simulator/fault.h"

#include <gmock/gmock.h>

namespace simulator {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::vector<std::string> kReply = {"$SYVER=1\r\n"};

Fault Of(const char* text) {
  return FaultFromText(text).value();
}

TEST(Faults, NoneLeavesAReplyAlone) {
  EXPECT_THAT(AfterFault(Fault(), kReply), ElementsAre("$SYVER=1\r\n"));
  EXPECT_THAT(AfterFault(Of("delay=50,foreign,reorder"), kReply), ElementsAre("$SYVER=1\r\n"));
}

TEST(Faults, LoseTheReplyInThreeWays) {
  for (const char* text : {"silence", "lose-command", "lose-reply", "lose-reply,empty"}) {
    EXPECT_THAT(AfterFault(Of(text), kReply), IsEmpty()) << text;
  }
}

TEST(Faults, TruncateSomewhereInside) {
  EXPECT_THAT(AfterFault(Of("truncate=0"), kReply), ElementsAre("$"));
  EXPECT_THAT(AfterFault(Of("truncate=500"), kReply), ElementsAre("$SYVE"));
  EXPECT_THAT(AfterFault(Of("truncate=999"), kReply), ElementsAre("$SYVER=1\r"));
  EXPECT_THAT(AfterFault(Of("truncate=500"), {"$"}), ElementsAre("$"));
}

TEST(Faults, GarbleOneByte) {
  EXPECT_THAT(AfterFault(Of("garble=0:1"), kReply), ElementsAre("%SYVER=1\r\n"));
  EXPECT_THAT(AfterFault(Of("garble=799:3"), kReply), ElementsAre("$SYVER=2\r\n"));
  EXPECT_THAT(AfterFault(Of("garble=999:255"), kReply), ElementsAre("$SYVER=1\r\xf5"));
  EXPECT_THAT(AfterFault(Of("garble=0:1"), {""}), ElementsAre(""));
}

TEST(Faults, SplitIntoTwoDatagramsThatAreNotEmpty) {
  EXPECT_THAT(AfterFault(Of("split=0"), kReply), ElementsAre("$", "SYVER=1\r\n"));
  EXPECT_THAT(AfterFault(Of("split=999"), kReply), ElementsAre("$SYVER=1\r", "\n"));
}

TEST(Faults, EmptyAndDuplicate) {
  EXPECT_THAT(AfterFault(Of("empty"), kReply), ElementsAre(""));
  EXPECT_THAT(AfterFault(Of("duplicate"), kReply), ElementsAre("$SYVER=1\r\n", "$SYVER=1\r\n"));
  EXPECT_THAT(AfterFault(Of("duplicate,split=0"), kReply),
              ElementsAre("$", "SYVER=1\r\n", "$", "SYVER=1\r\n"));
}

TEST(Faults, MakeNoReplyWhereThereIsNone) {
  EXPECT_THAT(AfterFault(Of("empty,duplicate,garble=0:1,truncate=0,split=0"), {}), IsEmpty());
}

TEST(Faults, AreWrittenAndReadAsText) {
  EXPECT_EQ(FaultText(Fault()), "-");
  const std::string all =
      "silence,lose-command,lose-reply,empty,duplicate,foreign,reorder,delay=1,garble=1:2,"
      "truncate=3,split=4";
  for (const std::string& text : std::vector<std::string>{
           "-", "silence", "lose-command", "lose-reply", "empty", "duplicate", "foreign", "reorder",
           "delay=3600000", "garble=0:255", "truncate=999", "split=512", all}) {
    const auto fault = FaultFromText(text);
    ASSERT_TRUE(fault) << text;
    EXPECT_EQ(FaultText(*fault), text);
  }
}

TEST(Faults, AreNotReadFromOtherTexts) {
  for (const char* text :
       {"", "lost", "delay", "delay=", "delay=-1", "delay=3600001", "garble=5", "garble=5:0",
        "garble=5:256", "truncate=1000", "split=x", "silence,", ",silence", "silence=1", "- "}) {
    EXPECT_FALSE(FaultFromText(text)) << text;
  }
}

}  // namespace
}  // namespace simulator
