// SPDX-License-Identifier: MIT
// Four threads of a host at once, each with its own part of the work, while the worker talks to a
// simulated mount that moves. Above all for the thread sanitizer (preset native-tsan).
#include <algorithm>
#include <atomic>
#include <functional>
#include <iterator>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <utility>
#include <vector>

#include "core/protocol/mount_status.h"
#include "simulator/civil_time.h"
#include "simulator/simulator.h"
#include "tests/library/engine/engine_fixture.h"

namespace {

constexpr int kFaultPeriod = 20;  // exchanges

using Place = std::pair<double, double>;  // degrees: right ascension, declination

constexpr double kTarget[2] = {75.0, 40.0};
constexpr SiteTime kTime = {2024, 1, 15, 21, 0, 0.0, 9.0};
constexpr SiteLocation kLocation = {35.681, 139.767, 0.0};

// The simulated mount on an address of its own. It keeps every position that it has told.
class MovingMount {
 public:
  MovingMount() {
    simulator::SimulatorOptions options;
    options.timeScale = 50.0;
    // A reply that comes twice answers the next command, too, and so on until a reply is lost:
    // failed exchanges that take no time.
    options.faults = [](int exchange, std::string_view) {
      simulator::Fault fault;
      fault.duplicates = exchange % kFaultPeriod == kFaultPeriod - 1;
      fault.losesReply = exchange > kFaultPeriod && exchange % kFaultPeriod == kFaultPeriod / 2;
      return fault;
    };
    options.mount.utcSeconds = *simulator::SecondsFromCivil({2024, 1, 15, 12, 0, 0.0});
    const auto reporter = [this](const std::string& line) { Keep(line); };
    for (bool runs = false; !runs;) {
      // A controller that has just gone leaves an address that nobody has.
      options.address = simulator::ScriptedController().Address();
      mount = std::make_unique<simulator::Simulator>(options, reporter);
      runs = mount->Start();
    }
    address = options.address;
  }

  const std::string& Address() const { return address; }
  int Answers() const { return answers; }
  int Polls() const { return polls; }
  std::set<Place> Places() {
    const std::lock_guard guard(placesLock);
    return places;
  }

 private:
  void Keep(const std::string& line) {
    ++answers;
    MountStatus status;
    const size_t reply = line.find("-> $MTSTA=");
    if (reply == std::string::npos || !DecodeStatus(line.c_str() + reply + 3, status)) return;
    ++polls;
    const std::lock_guard guard(placesLock);
    places.emplace(status.raDegrees, status.decDegrees);
  }

  std::string address;
  std::atomic<int> answers = 0;
  std::atomic<int> polls = 0;
  std::mutex placesLock;
  std::set<Place> places;  // guarded by placesLock
  std::unique_ptr<simulator::Simulator> mount;
};

class BusyThreads : public testing::Test {
 protected:
  BusyThreads() {
    rhythm.SetPeriod(10);
    const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
    telescope.SetLogPath((folder.Narrow() + separator).c_str());
  }
  ~BusyThreads() override {
    StopCalling();
    telescope.End();
  }

  // Over and over from a thread of its own, a round for each answer of the mount at the most.
  void CallFromAThread(const std::vector<std::function<void()>>& functions) {
    callers.emplace_back([this, functions] {
      while (!stopping) {
        const int seen = mount.Answers();
        for (const auto& function : functions) function();
        calls += static_cast<int>(functions.size());
        while (!stopping && mount.Answers() == seen) std::this_thread::yield();
      }
    });
  }
  void StopCalling() {
    stopping = true;
    for (std::thread& caller : callers) caller.join();
    callers.clear();
  }
  void ReadPosition() {
    double radec[2] = {};
    if (telescope.GetPos(radec) == 0) return;
    const std::lock_guard guard(publishedLock);
    published.emplace(radec[0], radec[1]);
  }

  // Seldom, since the worker then sleeps.
  void GuideNowAndThen() {
    if (++guides % 8 == 0) telescope.SlewPulseDuration(1, 0, 0, 0, 0.5, 0.5);
  }
  // Seldom, since each call is a line of debug output.
  void HoldNowAndThen() {
    if (++holds % 16 != 0) return;
    telescope.Slew(TELESCOPE_EAST, 1, 9);
    telescope.Slew(TELESCOPE_EAST, 0, 9);
  }

  void WatchAsAPlanetarium();
  void GuideAsAGuider();
  void MoveAsAUser();
  void ConfigureAsAHost();

  TempFolder folder;  // the journals land here
  RecordingApp app;
  MovingMount mount;
  CTelescope telescope;
  ThreadCtrlProbe rhythm{telescope};
  TelescopeProbe probe{telescope};
  std::vector<std::thread> callers;
  std::atomic<bool> stopping = false;
  std::atomic<bool> ending = false;
  std::atomic<int> calls = 0;
  int guides = 0;  // of the guider's thread
  int holds = 0;   // of the user's thread
  std::mutex publishedLock;
  std::set<Place> published;  // guarded by publishedLock
};

void BusyThreads::WatchAsAPlanetarium() {
  CallFromAThread({[this] { ReadPosition(); }, [this] { telescope.GetParking(); },
                   [this] { telescope.GetSlewing(); }, [this] { telescope.GetBusy(); },
                   [this] { telescope.GetConnected(); }, [this] { telescope.GetStatus(); },
                   [this] { telescope.GetTargetValid(); }, [this] { telescope.GetEastWest(); },
                   [this] { telescope.GetVersionText(); }, [this] { telescope.GetSiteTextA(); },
                   [this] { ReadPosition(); }});
}

void BusyThreads::GuideAsAGuider() {
  CallFromAThread({[this] { telescope.SetGuideSpeed(0.5, 0.5); }, [this] { GuideNowAndThen(); },
                   [this] { ReadPosition(); }});
}

void BusyThreads::MoveAsAUser() {
  CallFromAThread({[this] { telescope.Look(kTarget); }, [this] { telescope.Stop(); },
                   [this] { telescope.SetPos(kTarget); }, [this] { telescope.Sync(nullptr); },
                   [this] { HoldNowAndThen(); }, [this] { telescope.AlignReset(); },
                   [this] { telescope.Home(); }, [this] { telescope.Park(); },
                   [this] { telescope.UnPark(); }, [this] { telescope.Stop(); }});
}

void BusyThreads::ConfigureAsAHost() {
  CallFromAThread({[this] { telescope.BaseSetting(&kTime, &kLocation); },
                   [this] { telescope.SetName("Scope"); }, [this] { telescope.SetVendor("Maker"); },
                   [this] { telescope.SetIni("none.ini", "Mount"); },
                   [this] { telescope.SetLogPrefix("scope"); },
                   [this] { telescope.SetEastWest(1); },
                   [this] { telescope.ShowController(false); }, [this] { telescope.OwnerWindow(); },
                   [this] {
                     if (ending) return;
                     char version[16];
                     telescope.Check(nullptr, "192.0.2.1", version, sizeof version, nullptr);
                   },
                   [this] {
                     if (!ending) telescope.Start(nullptr, "192.0.2.1");
                   }});
}

TEST_F(BusyThreads, SeeNoPositionThatTheMountNeverTold) {
  ASSERT_EQ(telescope.Start(nullptr, mount.Address().c_str()), 1);
  WatchAsAPlanetarium();
  GuideAsAGuider();
  MoveAsAUser();
  ConfigureAsAHost();
  constexpr std::chrono::seconds kDeadline{60};
  EXPECT_TRUE(Eventually([this] { return mount.Polls() > 30 && calls > 3000; }, kDeadline));
  // The journal is written while the worker still finds failures to note.
  ending = true;
  telescope.End();
  StopCalling();
  EXPECT_FALSE(std::filesystem::is_empty(folder.Narrow())) << "no journal";

  const std::set<Place> told = mount.Places();
  std::vector<Place> invented;
  std::set_difference(published.begin(), published.end(), told.begin(), told.end(),
                      std::back_inserter(invented));
  EXPECT_GT(published.size(), 3u) << "the mount moves";
  EXPECT_TRUE(invented.empty()) << invented.size() << ", the first one is "
                                << invented.front().first << ", " << invented.front().second;
}

}  // namespace
