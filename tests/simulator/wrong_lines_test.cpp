// SPDX-License-Identifier: MIT
// Lines no controller should ever get: each is answered, and none changes anything.
#include <gtest/gtest.h>

#include <iterator>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "simulator/command_interpreter.h"
#include "tests/simulator/mount_fixture.h"

namespace simulator {
namespace {

struct WrongLine {
  std::string line;
  std::string reply;
};

/// Lines without a known key.
const WrongLine kNoCommands[] = {{"", "$ERROR=COMMAND"},
                                 {"\r\n", "$ERROR=COMMAND"},
                                 {"$", "$ERROR=COMMAND"},
                                 {"OK", "$ERROR=COMMAND"},
                                 {"MTSTA?", "$ERROR=COMMAND"},
                                 {"$mtsta?", "$ERROR=COMMAND"},
                                 {" $MTSTA?", "$ERROR=COMMAND"},
                                 {"$MTST?", "$ERROR=COMMAND"},
                                 {"$MTXYZ?", "$ERROR=COMMAND"},
                                 {"$MTXYZ=1", "$ERROR=COMMAND"},
                                 {std::string(100000, 'x'), "$ERROR=COMMAND"},
                                 {std::string(10, '\0'), "$ERROR=COMMAND"},
                                 {"\xff\xfe\x80", "$ERROR=COMMAND"}};

/// Settings whose values are wrong, and settings of what can only be asked.
const std::pair<const char*, std::vector<std::string>> kWrongSettings[] = {
    {"$MTTGT", {"=3,1,2",          "=3,,,",
                "=3,1,,x",         "=3,24.1,0,",
                "=3,-0.1,0,",      "=3,1,90.1,",
                "=3,1,-90.1,",     "=4,1,2,",
                "=0,1,2,",         "=3.5,1,2,",
                "=3,nan,2,",       "=3,1,inf,",
                "=3,1e0,2,",       "=3,0x1,2,",
                "=3,1,2 3,",       "=3,1;2,",
                "=2,nan,0,Park",   "=2,90,0,Park",
                "=1,270,200,Home", "=1,1e400,0,Home",
                "=3,1,2,a\tb",     "=99999999999999999999,1,2,"}},
    {"$ALIGN", {"=3,1,2", "=3,25,2,", "=3,1,91,", "=9,1,2,", "=3,inf,2,", "=3,x,2,"}},
    {"$ALINI", {"=1", "=0,0", "=x", "=0.0"}},
    {"$MTSTP", {"=0", "=2", "=1,1", "=1x", "=1.0"}},
    {"$MTMV2",
     {"=1,2", "=1,2,3,4", "=-1,2,3", "=3601,2,3", "=1,1001,0", "=1,0,-1001", "=nan,1,1", "=1,inf,1",
      "=1,1,-inf", "=a,b,c", "=1,,1"}},
    {"$MTAGS", {"=1", "=1,2,3", "=-1,1", "=1,nan", "=1,1001"}},
    {"$MTCOM", {"=1", "=1,2,3", "=-1,1", "=1,31", "=31,1", "=inf,1"}},
    {"$MTGTS", {"=x", "=1.5", "=-1", "=1,2", "=99999999999"}},
    {"$MTINI", {"=0", "=2", "=1,1"}},
    {"$SYLOC",
     {"=139.767,35.681", "=139.767,35.681,9,1", "=180.1,0,0", "=0,90.1,0", "=0,0,15", "=0,0,-13",
      "=0,0,9.5", "=nan,0,0", "=0,inf,0", "=E139,35,9"}},
    {"$SYLTM",
     {"=2024,1,2,3,4", "=2024,1,2,3,4,5,6", "=2024,13,1,0,0,0", "=2024,2,30,0,0,0",
      "=2024,1,1,24,0,0", "=2024,1,1,0,60,0", "=2024,1,1,0,0,60", "=2024,1,1,0,0,-1",
      "=24,1,1,0,0,0", "=2024,1,1,0,0,nan", "=2024.5,1,1,0,0,0", "=-2024,1,1,0,0,0"}},
    {"$MTSTA", {"=1"}},
    {"$MTMDL", {"=1"}},
    {"$SYVER", {"=1"}},
    {"$SYUTM", {"=2024,1,1,0,0,0"}},
};

std::vector<WrongLine> WrongLines() {
  std::vector<WrongLine> lines(std::begin(kNoCommands), std::end(kNoCommands));
  for (const auto& [key, tails] : kWrongSettings) {
    const std::string refusal = std::string(key) + "=ERROR";
    for (const std::string& tail : tails) lines.push_back({key + tail, refusal});
    for (const char* tail : {"", "=", ":1", "??", "? ", "=1\r", "=1\n$MTSTP=1"}) {
      lines.push_back({std::string(key) + tail, refusal});
    }
    lines.push_back({std::string(key) + "=1," + std::string(300, '0'), refusal});
    lines.push_back({std::string(key) + "?" + std::string(1, '\0'), refusal});
  }
  for (const char* key : {"$MTTGT", "$ALIGN", "$ALINI", "$MTSTP", "$MTMV2", "$MTINI", "$SYLTM"}) {
    lines.push_back({std::string(key) + "?", std::string(key) + "=ERROR"});
  }
  return lines;
}

class WrongLineTest : public Mount {
 protected:
  void SetUp() override { TrackAt(-40.0, 20.0); }
  std::string Everything() {
    std::string all;
    for (const char* query : {"$MTSTA?", "$SYLOC?", "$SYUTM?", "$MTAGS?", "$MTCOM?", "$MTGTS?"}) {
      all += interpreter.Answer(query).reply + "\n";
    }
    return all;
  }
  CommandInterpreter interpreter{mount};
};

TEST_F(WrongLineTest, IsRefusedAndChangesNothing) {
  const std::string before = Everything();
  for (const WrongLine& wrong : WrongLines()) {
    EXPECT_EQ(interpreter.Answer(wrong.line).reply, wrong.reply) << wrong.line.substr(0, 80);
    ASSERT_EQ(Everything(), before) << wrong.line.substr(0, 80);
  }
}

TEST_F(WrongLineTest, OfRandomBytesIsAlwaysAnsweredInOneLine) {
  std::mt19937 random(20240115);
  const std::string good[] = {"$MTTGT=3,5.575533,22.014500,", "$SYLTM=2024,03,01,05,30,00.0",
                              "$MTMV2=1.000000,0.000000,25.500000", "$SYLOC= 139.767, 35.681,9"};
  for (int round = 0; round < 20000; ++round) {
    std::string line = good[round % 4];
    for (int change = 0; change < 1 + round % 3; ++change) {
      line[random() % line.size()] = static_cast<char>(random());
    }
    const std::string reply = interpreter.Answer(line).reply;
    ASSERT_EQ(reply[0], '$');
    ASSERT_EQ(reply.find_first_of("\r\n"), std::string::npos);
    mount.Advance(0.01);
    const SkyPosition place = mount.Position();
    ASSERT_TRUE(place.raHours >= 0.0 && place.raHours < 24.0) << line;
    ASSERT_TRUE(place.decDegrees >= -90.0 && place.decDegrees <= 90.0) << line;
  }
}

}  // namespace
}  // namespace simulator
