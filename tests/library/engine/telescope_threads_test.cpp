// SPDX-License-Identifier: MIT
// Several host threads at once, as a host with a guider and a window has them. Run it with the
// thread sanitizer (preset native-tsan), too.
#include <atomic>
#include <functional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tests/library/engine/engine_fixture.h"

namespace {

class Threads : public EngineTest {
 protected:
  ~Threads() override { StopCalling(); }

  // Calls over and over, each of the threads beginning with another function.
  void CallFromThreads(size_t count, std::vector<std::function<void()>> functions) {
    for (size_t number = 0; number < count; ++number) {
      callers.emplace_back([this, number, functions] {
        for (size_t i = number; !stopping; ++i) {
          functions[i % functions.size()]();
          ++calls;
        }
      });
    }
  }
  void StopCalling() {
    stopping = true;
    for (std::thread& caller : callers) caller.join();
    callers.clear();
  }

  struct LinksSeen {
    int checks = 0;
    int sessions = 0;
    int samePort = 0;                // links with the port of the one before
    std::vector<std::string> mixed;  // what neither of the two sends
  };
  // What came in from one port after the other, told apart.
  LinksSeen Links() const {
    constexpr const char* kHandshake = "$SYVER? $SYVER? $MTMDL? $SYVER? ";
    constexpr const char* kStart = "$SYLOC? $SYUTM? $MTCOM=0.000000,3.000000 ";
    LinksSeen seen;
    const auto received = controller.Received();
    for (size_t i = 0; i < received.size();) {
      const uint16_t port = received[i].fromPort;
      std::string commands;
      for (; i < received.size() && received[i].fromPort == port; ++i) {
        if (received[i].text != "$MTSTA?") commands += received[i].text + " ";
      }
      std::string_view rest = commands;
      int links = 0;
      for (; TakeFrom(rest, kHandshake); ++links) {
        ++(TakeFrom(rest, kStart) ? seen.sessions : seen.checks);
      }
      if (links == 0 || !rest.empty()) seen.mixed.push_back(commands);
      if (links > 1) seen.samePort += links - 1;
    }
    return seen;
  }
  static bool TakeFrom(std::string_view& text, std::string_view begin) {
    if (!text.starts_with(begin)) return false;
    text.remove_prefix(begin.size());
    return true;
  }

  std::vector<std::thread> callers;
  std::atomic<bool> stopping = false;
  std::atomic<int> calls = 0;
};

constexpr double kTarget[2] = {83.633, 22.0145};
constexpr SiteTime kTime = {2024, 1, 15, 21, 0, 0.0, 9.0};
constexpr SiteLocation kLocation = {35.681, 139.767, 0.0};

TEST_F(Threads, MayAllCallWhileTheSessionRuns) {
  StartSession();
  std::atomic<int> tornPositions = 0;
  controller.AnswersInTurn("$MTSTA?", {"$MTSTA=60000.5,1,0,0,0,45.0,10,20,6.0,90.0,4"});
  // Right ascension and declination always agree, so that a torn pair shows.
  for (int i = 0; i < 3; ++i) ASSERT_TRUE(PollsAgain());
  const auto readPosition = [&] {
    double radec[2] = {};
    telescope.GetPos(radec);
    if (radec[0] != radec[1]) ++tornPositions;
  };
  CallFromThreads(
      4, {readPosition, [&] { telescope.Look(kTarget); }, [&] { telescope.Sync(nullptr); },
          readPosition, [&] { telescope.Slew(1, 1, 3); }, [&] { telescope.SetPos(kTarget); },
          readPosition, [&] { telescope.SetGuideSpeed(0.5, 0.5); }, [&] { telescope.Stop(); },
          [&] { telescope.GetEastWest(); }, [&] { telescope.SetEastWest(1); },
          [&] { telescope.BaseSetting(&kTime, &kLocation); },
          [&] { telescope.SlewPulseDuration(1, 0, 0, 0, 1.0, 1.0); },
          [&] { telescope.GetParking(); }, [&] { telescope.GetSlewing(); },
          [&] { telescope.SetName("Scope"); }, [&] { telescope.SetIni("none.ini", "Mount"); },
          [&] { telescope.GetDateText(); }, [&] { telescope.Stop(); }});
  for (int poll = 0; poll < 10; ++poll) {
    const double hours = poll + 0.25;
    const std::string text = std::to_string(hours) + "," + std::to_string(hours * 15.0);
    controller.Status("60000.5,1,0,0,0,45.0,10,20," + text + ",4");
    ASSERT_TRUE(PollsAgain());
  }
  StopCalling();
  EXPECT_GT(calls, 1000);
  EXPECT_EQ(tornPositions, 0);
  telescope.Stop();
  EXPECT_TRUE(Idle());
  EXPECT_TRUE(PollsAgain());
}

// What the controller saw of one link after the other: of a check the handshake, of a session that
// and what a start asks for besides, then polls. Two at once would mix.
TEST_F(Threads, MayStartCheckAndEndAtOnce) {
  std::atomic<int> started = 0;
  std::atomic<int> checked = 0;  // by the controller, or from what a session knew
  std::atomic<int> wrongVersions = 0;
  const auto start = [&] { started += Connect(); };
  const auto check = [&] {
    char version[16] = "";
    if (telescope.Check(nullptr, controller.Address().c_str(), version, sizeof version, nullptr)) {
      ++checked;
      wrongVersions += std::string(version) != "1.00";
    }
  };
  CallFromThreads(4, {start, check, [this] { telescope.End(); }, check});
  EXPECT_TRUE(Eventually([&] { return calls > 400 && started > 10 && checked > 10; }, kSoon * 3));
  StopCalling();
  telescope.End();
  EXPECT_FALSE(rhythm.HasThread());
  EXPECT_EQ(wrongVersions, 0);
  const LinksSeen seen = Links();
  EXPECT_THAT(seen.mixed, testing::IsEmpty());
  EXPECT_LE(seen.samePort, 1) << "by chance once in some hundred runs; always, if left open";
  EXPECT_EQ(seen.sessions, started);
  EXPECT_LE(seen.checks, checked) << "no more than were answered, of which a session answered some";
  // The engine is as good as new.
  controller.Clear();
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(PollsAgain());
  EXPECT_EQ(controller.CountOf("$SYVER?"), 3);
}

}  // namespace
