// SPDX-License-Identifier: MIT
// Memory of the host that the driver writes to or reads from: not a byte beside it is touched. It
// lies right before a page that stops the program.
#include <limits>

#include "tests/library/bad_calls/guarded_memory.h"
#include "tests/library/dll/driver_fixture.h"

namespace {

class Buffers : public DriverTest {
 protected:
  int32_t Check(char* version, size_t size, char* extra, size_t extraSize) {
    return driver.Check(nullptr, controller.Address().c_str(), nullptr, version, size, extra,
                        extraSize);
  }
  /// The version cut to a buffer, and the rest of the buffer left alone.
  void ExpectCutTo(const std::string& version, size_t size) {
    const GuardedMemory buffer(size);
    const GuardedMemory extra(1);
    ASSERT_EQ(Check(buffer.Get(), size, extra.Get(), 0), 1) << size;
    EXPECT_TRUE(buffer.IsIntactBefore()) << size;
    EXPECT_TRUE(extra.IsIntactBefore()) << size;
    EXPECT_EQ(*extra.Get(), '\0');
    if (size == 0) return;
    const std::string text = version.substr(0, size - 1);
    EXPECT_STREQ(buffer.Get(), text.c_str());
    EXPECT_TRUE(buffer.IsUntouchedFrom(text.size() + 1)) << size;
  }
};

TEST_F(Buffers, OfEverySizeTakeAsMuchOfAVersionAsFits) {
  for (const size_t size : {0, 1, 2, 3, 4, 5, 6, 8, 64}) ExpectCutTo("1.00", size);
}

TEST_F(Buffers, OfEverySizeTakeAsMuchOfALongVersionAsFits) {
  const std::string version(3000, 'v');
  controller.Answers("$SYVER?", "$SYVER=" + version);
  for (const size_t size : {0, 1, 2, 17, 2999, 3000, 3001, 4096}) ExpectCutTo(version, size);
}

TEST_F(Buffers, OfASessionsCheckAreCutTheSameWay) {
  StartSession();
  for (const size_t size : {0, 1, 2, 4, 5, 6}) ExpectCutTo("1.00", size);
}

TEST_F(Buffers, SaidToBeEndlessTakeNoMoreThanTheText) {
  const GuardedMemory buffer(5);
  const GuardedMemory extra(1);
  constexpr size_t kEndless = std::numeric_limits<size_t>::max();
  EXPECT_EQ(Check(buffer.Get(), kEndless, extra.Get(), kEndless), 1);
  EXPECT_STREQ(buffer.Get(), "1.00");
}

TEST_F(Buffers, AreLeftAloneWhenNobodyAnswers) {
  controller.IsSilentTo("$SYVER?");
  const GuardedMemory buffer(8);
  const GuardedMemory extra(1);
  EXPECT_EQ(Check(buffer.Get(), 8, extra.Get(), 1), 0);
  EXPECT_TRUE(buffer.IsUntouchedFrom(0));
  EXPECT_TRUE(extra.IsUntouchedFrom(0));
}

TEST_F(Buffers, MayBeMissing) {
  EXPECT_EQ(Check(nullptr, 0, nullptr, 0), 1);
  EXPECT_EQ(Check(nullptr, 100, nullptr, 100), 1);
}

TEST_F(Buffers, OfAPositionAreTwoNumbersLong) {
  const GuardedMemory radec(2 * sizeof(double));
  EXPECT_EQ(driver.GetPos(nullptr, radec.As<double>()), 0);
  EXPECT_EQ(radec.As<double>()[0], -1.0);
  EXPECT_EQ(radec.As<double>()[1], -1.0);
  StartSession();
  EXPECT_EQ(driver.GetPos(nullptr, radec.As<double>()), 1);
  EXPECT_EQ(radec.As<double>()[0], 90.0);
  EXPECT_TRUE(radec.IsIntactBefore());
}

TEST_F(Buffers, ThatAreReadAreReadToTheirEndAndNoFurther) {
  StartSession();
  const double target[2] = {83.633, 22.0145};
  const GuardedMemory radec(sizeof target);
  radec.Fill(target, sizeof target);
  EXPECT_EQ(driver.SetPos(nullptr, radec.As<double>()), 1);
  EXPECT_EQ(driver.Look(nullptr, radec.As<double>()), 1);
  EXPECT_EQ(driver.Sync(nullptr, radec.As<double>()), 1);
  const SiteTime time = {2026, 11, 21, 21, 30, 0.0, 9.0};
  const SiteLocation site = {35.0, 135.0, 0.0};
  const GuardedMemory timeMemory(sizeof time);
  const GuardedMemory siteMemory(sizeof site);
  timeMemory.Fill(&time, sizeof time);
  siteMemory.Fill(&site, sizeof site);
  EXPECT_EQ(driver.BaseSetting(nullptr, timeMemory.As<SiteTime>(), siteMemory.As<SiteLocation>()),
            1);
  EXPECT_TRUE(PollsAgain());
}

// The driver keeps copies: what a host frees after the call is not looked at again.
TEST_F(Buffers, MayGoAfterTheCall) {
  StartSession();
  {
    const GuardedMemory text(5);
    text.Fill("scop", 5);
    driver.SetName(nullptr, text.Get());
    driver.SetVendor(nullptr, text.Get());
    driver.SetLogPrefix(nullptr, text.Get());
    driver.SetIni(nullptr, text.Get(), text.Get());
    const double target[2] = {10.0, 20.0};
    const GuardedMemory radec(sizeof target);
    radec.Fill(target, sizeof target);
    driver.Look(nullptr, radec.As<double>());
  }
  EXPECT_TRUE(controller.WaitFor("$MTTGT=3,0.666667,20.000000,", kSoonMs));
  driver.End(nullptr);
  StartSession();
}

TEST_F(Buffers, OfAllKindsMayBeMissingWhereThatIsAllowed) {
  StartSession();
  EXPECT_EQ(driver.SetName(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetVendor(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetIni(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetLogPath(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetLogPrefix(nullptr, nullptr), 1);
  EXPECT_EQ(driver.SetPos(nullptr, nullptr), 1);
  EXPECT_EQ(driver.BaseSetting(nullptr, nullptr, nullptr), 1);
  EXPECT_EQ(driver.GetPos(nullptr, nullptr), 0);
  EXPECT_EQ(driver.Sync(nullptr, nullptr), 1);
  EXPECT_EQ(driver.Start(nullptr, nullptr, nullptr, 0), 0);
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(Sent(), std::vector<std::string>());
}

}  // namespace
