// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/host_calls.h"

namespace {

constexpr double kTarget[2] = {83.633, 22.0145};
constexpr SiteTime kTime = {2026, 11, 21, 21, 30, 0.0, 9.0};
constexpr SiteLocation kSite = {35.681, 139.767, 40.0};

int32_t Check(const DriverLibrary& driver, const std::string& address) {
  char version[16];
  char extra[4];
  return driver.Check(nullptr, address.c_str(), nullptr, version, sizeof version, extra,
                      sizeof extra);
}

int32_t GetPos(const DriverLibrary& driver) {
  double radec[2];
  return driver.GetPos(nullptr, radec);
}

}  // namespace

std::vector<int32_t> HostCall::Answers(bool inSession, Polled polled) const {
  if (startsSession && inSession) return {0};
  switch (polled) {
    case Polled::kNever:
      return {unpolledAnswer};
    case Polled::kOnce:
      return {answer};
    default:
      return {unpolledAnswer, answer};
  }
}

std::vector<HostCall> AllHostCalls(const std::string& address) {
  using Driver = const DriverLibrary&;
  constexpr int32_t one = 1;
  const auto always = [](std::string name, std::function<int32_t(Driver)> call, int32_t answer) {
    return HostCall{std::move(name), std::move(call), answer, answer};
  };
  return {
      always(
          "AlignReset", [](Driver d) { return d.AlignReset(nullptr); }, one),
      always(
          "BaseSetting", [](Driver d) { return d.BaseSetting(nullptr, &kTime, &kSite); }, one),
      always(
          "Check", [&address](Driver d) { return Check(d, address); }, one),
      always(
          "Dialog", [](Driver d) { return d.Dialog(nullptr, 1); }, one),
      always(
          "End", [](Driver d) { return d.End(nullptr); }, one),
      {"GetEastWest", [](Driver d) { return d.GetEastWest(nullptr); }, 0, -1},
      {"GetParking", [](Driver d) { return d.GetParking(nullptr); }, 0, 1},
      {"GetPos", GetPos, 1, 0},
      always(
          "GetSlewSpeedMax", [](Driver d) { return d.GetSlewSpeedMax(nullptr); }, 9),
      always(
          "GetStatus", [](Driver d) { return d.GetStatus(nullptr); }, one),
      always(
          "Home", [](Driver d) { return d.Home(nullptr); }, one),
      always(
          "Look", [](Driver d) { return d.Look(nullptr, kTarget); }, one),
      always(
          "Park", [](Driver d) { return d.Park(nullptr); }, one),
      always(
          "SetEastWest", [](Driver d) { return d.SetEastWest(nullptr, 1); }, one),
      always(
          "SetGuideSpeed", [](Driver d) { return d.SetGuideSpeed(nullptr, 0.5, 0.5); }, one),
      always(
          "SetIni", [](Driver d) { return d.SetIni(nullptr, "C:\\no.ini", "Mount"); }, one),
      always(
          "SetLogPath", [](Driver d) { return d.SetLogPath(nullptr, "C:\\no folder\\"); }, one),
      always(
          "SetLogPrefix", [](Driver d) { return d.SetLogPrefix(nullptr, "scope"); }, one),
      always(
          "SetName", [](Driver d) { return d.SetName(nullptr, "East pier"); }, one),
      always(
          "SetPos", [](Driver d) { return d.SetPos(nullptr, kTarget); }, one),
      always(
          "SetVendor", [](Driver d) { return d.SetVendor(nullptr, "Vendor"); }, one),
      always(
          "Slew", [](Driver d) { return d.Slew(nullptr, TELESCOPE_NORTH, 1, 4); }, one),
      always(
          "SlewPulseDuration",
          [](Driver d) { return d.SlewPulseDuration(nullptr, 1, 1, 1, 1, 1.0, 1.0); }, one),
      {"Start", [&address](Driver d) { return d.Start(nullptr, address.c_str(), nullptr, 0); }, 1,
       1, true},
      always(
          "Stop", [](Driver d) { return d.Stop(nullptr); }, one),
      always(
          "Sync", [](Driver d) { return d.Sync(nullptr, kTarget); }, one),
      always(
          "UnPark", [](Driver d) { return d.UnPark(nullptr); }, one),
  };
}
