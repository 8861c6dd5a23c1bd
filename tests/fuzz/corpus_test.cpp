// SPDX-License-Identifier: MIT
// Replays what the fuzzers found worth keeping: the fewest inputs that reach all they reached.
#include <gtest/gtest.h>

#include "tests/fuzz/corpus_file.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_wire.h"
#include "tests/fuzz/targets.h"

namespace {

struct Target {
  const char* name;
  void (*function)(FuzzInput);
};

void Replay(const Target& target, const std::string& bytes) {
  target.function(FuzzInput(reinterpret_cast<const uint8_t*>(bytes.data()), bytes.size()));
}

class FuzzCorpus : public testing::TestWithParam<Target> {};

TEST_P(FuzzCorpus, HoldsItsProperties) {
  const std::string path = VELQUIN_FUZZ_CORPUS "/" + std::string(GetParam().name) + ".txt";
  const std::vector<std::string> inputs = ReadCorpusFile(path);
  EXPECT_GE(inputs.size(), 5u) << path;
  for (size_t i = 0; i < inputs.size(); ++i) {
    try {
      Replay(GetParam(), inputs[i]);
    } catch (const BrokenProperty& broken) {
      ADD_FAILURE() << path << ":" << i + 1 << ": " << broken.what();
    }
  }
}

TEST_P(FuzzCorpus, TakesAnEmptyInput) {
  EXPECT_NO_THROW(Replay(GetParam(), ""));
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCorpus,
                         testing::Values(Target{"string_sep", FuzzStringSep},
                                         Target{"status", FuzzStatus},
                                         Target{"command_key", FuzzCommandKey},
                                         Target{"udp_link", FuzzUdpLink},
                                         Target{"meridian_ini", FuzzMeridianIni},
                                         Target{"command_interpreter", FuzzCommandInterpreter}),
                         [](const auto& info) { return std::string(info.param.name); });

// A property that could not be broken would prove nothing.
TEST(FuzzProperties, CanBreak) {
  EXPECT_THROW(RequireSame("a", "b", "a text"), BrokenProperty);
  EXPECT_THROW(Require(false, "a property"), BrokenProperty);
}

}  // namespace
