// SPDX-License-Identifier: MIT
// Sends the mount to a position and waits until it is there. Links velquin.dll's import library.
// goto-cpp ADDRESS RA DEC (degrees): exit code 0 when it arrived, 1 when not, 2 for wrong usage.
#include <telescope_api.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <stdexcept>
#include <string>
#include <thread>

namespace {

struct SkyPosition {
  double radec[2];  // degrees: right ascension, declination; the order of the driver
};

double Degrees(const std::string& name, const std::string& text, double low, double high) {
  std::size_t used = 0;
  double value = 0.0;
  try {
    value = std::stod(text, &used);
  } catch (const std::logic_error&) {  // not a number at all, or one too large
  }
  if (used == 0 || used != text.size() || !(value >= low && value <= high)) {
    throw std::invalid_argument(name + " must be degrees from " + std::to_string(int(low)) +
                                " to " + std::to_string(int(high)) + ", not '" + text + "'");
  }
  return value;
}

double Distance(const SkyPosition& a, const SkyPosition& b) {
  const double degree = 3.14159265358979323846 / 180.0;
  const double dec1 = a.radec[1] * degree, dec2 = b.radec[1] * degree;
  const double cosine =
      std::sin(dec1) * std::sin(dec2) +
      std::cos(dec1) * std::cos(dec2) * std::cos((a.radec[0] - b.radec[0]) * degree);
  return std::acos(std::max(-1.0, std::min(1.0, cosine))) / degree;
}

// A session from here to the end of the block: each successful start has its end.
class Session {
 public:
  explicit Session(const std::string& address) {
    char version[64] = "";
    // TelescopeStart would tell the user in a message box; TelescopeCheck only answers.
    if (!TelescopeCheck(nullptr, address.c_str(), nullptr, version, sizeof version, nullptr, 0) ||
        !TelescopeStart(nullptr, address.c_str(), nullptr, 0)) {
      throw std::runtime_error("no mount answers at " + address);
    }
    std::printf("connected, version %s\n", version);
  }
  ~Session() { TelescopeEnd(nullptr); }  // waits while the driver shows a message box
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;

  // Goes there and waits. The driver tells positions, not arrivals: ten seconds without a new
  // position are a failure.
  bool Goto(const SkyPosition& target) const {
    using Clock = std::chrono::steady_clock;
    TelescopeLook(nullptr, target.radec);  // returns at once
    SkyPosition last = {{0.0, 1000.0}};
    for (auto moved = Clock::now(); Clock::now() - moved < std::chrono::seconds(10);) {
      std::this_thread::sleep_for(std::chrono::milliseconds(250));
      SkyPosition now = {{0.0, 0.0}};
      if (!TelescopeGetPos(nullptr, now.radec)) continue;  // no answer just now
      if (Distance(now, target) < 1.0 / 60.0) return true;
      if (last.radec[1] < 100.0 && Distance(now, last) < 0.01) continue;  // not moving
      std::printf("%.2f degrees left\n", Distance(now, target));
      last = now;
      moved = Clock::now();
    }
    TelescopeStop(nullptr);
    return false;
  }
};

}  // namespace

int main(int argc, char** argv) try {
  if (argc != 4) throw std::invalid_argument("usage: goto-cpp ADDRESS RA DEC, in degrees");
  const SkyPosition target = {{Degrees("RA", argv[2], 0, 360), Degrees("DEC", argv[3], -90, 90)}};
  const Session session(argv[1]);  // next: TelescopeBaseSetting, and wait a second
  if (!session.Goto(target)) {
    std::fputs("goto-cpp: the mount does not get there (below the horizon?)\n", stderr);
    return 1;
  }
  std::puts("arrived");
  return 0;
} catch (const std::invalid_argument& wrong) {
  std::fprintf(stderr, "goto-cpp: %s\n", wrong.what());
  return 2;
} catch (const std::exception& failure) {
  std::fprintf(stderr, "goto-cpp: %s\n", failure.what());
  return 1;
}
