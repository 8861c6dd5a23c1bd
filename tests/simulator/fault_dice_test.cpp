// SPDX-License-Identifier: MIT
#include "simulator/fault_dice.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace simulator {
namespace {

constexpr int kExchanges = 10'000;

FaultOptions ABadNight() {
  FaultOptions options;
  options.loss = 50'000;
  options.duplicate = 20'000;
  options.reorder = 20'000;
  options.truncate = 10'000;
  options.garble = 10'000;
  options.empty = 1'000;
  options.foreign = 10'000;
  options.split = 30'000;
  options.shortestDelayMs = 20;
  options.longestDelayMs = 300;
  options.seed = 7;
  return options;
}

template <typename Predicate>
int Count(const FaultDice& dice, Predicate predicate) {
  int count = 0;
  for (int exchange = 1; exchange <= kExchanges; ++exchange) count += predicate(dice(exchange));
  return count;
}

// The numbers were counted once; they are the same on every machine, or a night's seed would mean
// nothing on another one. Each lies where its rate lets expect it.
TEST(FaultDice, HitsExactlySoManyOfTenThousand) {
  const FaultDice dice(ABadNight());
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.losesCommand; }), 523);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.losesReply; }), 519);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.duplicates; }), 188);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.reorders; }), 186);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.truncateAt.has_value(); }), 81);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.garblesAt.has_value(); }), 90);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.empties; }), 11);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.foreign; }), 91);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.splitAt.has_value(); }), 298);
  EXPECT_EQ(Count(dice, [](const Fault& fault) { return fault.silence; }), 0);
}

TEST(FaultDice, MakesTheSameFaultsForTheSameSeedOnly) {
  const FaultDice first(ABadNight());
  const FaultDice again(ABadNight());
  FaultOptions options = ABadNight();
  options.seed = 8;
  const FaultDice other(options);
  int different = 0;
  for (int exchange = kExchanges; exchange > 0; --exchange) {
    ASSERT_EQ(first(exchange), again(exchange)) << exchange;
    different += first(exchange) != other(exchange);
  }
  EXPECT_GT(different, kExchanges / 2);
  EXPECT_EQ(FaultText(first(1)), "delay=176");
  EXPECT_EQ(FaultText(first(10'000)), "delay=291");
}

TEST(FaultDice, LeavesTheOtherFaultsWhereTheyWereWhenOneIsAdded) {
  FaultOptions one;
  one.loss = 50'000;
  FaultOptions two = one;
  two.garble = kAlways;
  two.longestDelayMs = 300;
  FaultOptions more = one;
  more.loss = 100'000;
  for (int exchange = 1; exchange <= 1000; ++exchange) {
    const Fault fault = FaultDice(one)(exchange);
    EXPECT_EQ(FaultDice(two)(exchange).losesReply, fault.losesReply);
    EXPECT_TRUE(!fault.losesReply || FaultDice(more)(exchange).losesReply);
  }
}

TEST(FaultDice, KeepsDelaysInTheirRangeAndReachesItsEnds) {
  const FaultDice dice(ABadNight());
  int shortest = 1000;
  int longest = 0;
  for (int exchange = 1; exchange <= kExchanges; ++exchange) {
    shortest = std::min(shortest, dice(exchange).delayMs);
    longest = std::max(longest, dice(exchange).delayMs);
  }
  EXPECT_EQ(shortest, 20);
  EXPECT_EQ(longest, 300);
}

TEST(FaultDice, FallsSilentAfterSoManyExchangesAndDoesNothingElseThen) {
  FaultOptions options = ABadNight();
  options.silenceAfter = 3;
  const FaultDice dice(options);
  EXPECT_FALSE(dice(3).silence);
  EXPECT_EQ(FaultText(dice(4)), "silence");
  EXPECT_EQ(FaultText(dice(kExchanges)), "silence");
  options.silenceAfter = 0;
  EXPECT_TRUE(FaultDice(options)(1).silence);
}

TEST(FaultDice, DoesNothingAtRateZeroAndEverythingAtAHundredPercent) {
  EXPECT_EQ(Count(FaultDice({}), [](const Fault& fault) { return fault == Fault(); }), kExchanges);
  FaultOptions options;
  options.split = kAlways;
  EXPECT_EQ(Count(FaultDice(options), [](const Fault& fault) { return fault.splitAt.has_value(); }),
            kExchanges);
}

TEST(FaultTexts, ReadRates) {
  EXPECT_EQ(RateFromText("0%"), 0);
  EXPECT_EQ(RateFromText("0.1%"), 1000);
  EXPECT_EQ(RateFromText("5%"), 50'000);
  EXPECT_EQ(RateFromText("100%"), kAlways);
  for (const char* text : {"", "%", "5", "-1%", "100.1%", "nan%", "5%%", "5 percent", "0x1%"}) {
    EXPECT_FALSE(RateFromText(text)) << text;
  }
}

TEST(FaultTexts, ReadDelays) {
  const auto range = DelayFromText("20..300ms");
  ASSERT_TRUE(range);
  EXPECT_EQ(range->shortestMs, 20);
  EXPECT_EQ(range->longestMs, 300);
  EXPECT_EQ(DelayFromText("50ms").value().shortestMs, 50);
  EXPECT_EQ(DelayFromText("50ms").value().longestMs, 50);
  for (const char* text :
       {"", "ms", "50", "..ms", "20..ms", "..20ms", "300..20ms", "-1ms", "1.5ms", "60001ms"}) {
    EXPECT_FALSE(DelayFromText(text)) << text;
  }
}

}  // namespace
}  // namespace simulator
