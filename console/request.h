// SPDX-License-Identifier: MIT
// What a command line asks for, read and judged: whoever holds a Request can perform it without
// looking at text again. All texts are UTF-8. Plain data.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <variant>

#include "console/progress_line.h"
#include "console/sky_position.h"
#include "include/telescope_api.h"

namespace velquinctl {

/// The options that every command takes.
struct CommonOptions {
  bool json = false;
  bool quiet = false;
  bool showMessages = false;  ///< leave the driver's message boxes to the user
  ProgressMode progress = ProgressMode::kAuto;
  std::string library;  ///< path; empty for velquin.dll beside the program
  std::string logPath;
  std::string logPrefix;
  std::string name;
  std::optional<double> timeoutSeconds;  ///< empty for the command's own
};

struct CheckAction {};

struct StatusAction {
  bool watch = false;
  std::optional<double> forSeconds;
};

struct GotoAction {
  SkyPosition target;
  double toleranceDegrees = 0.0;
};

struct SyncAction {
  SkyPosition target;
  bool yes = false;  ///< do not ask, however far away it is
};

struct StopAction {};
struct HomeAction {};
struct ParkAction {};
struct UnparkAction {};

struct MonitorAction {
  double intervalSeconds = 1.0;
  std::optional<double> forSeconds;
  bool oneLine = false;  ///< a live display keeps to one line instead of making a table
};

struct SlewAction {
  int direction = 0;  ///< a TelescopeDirection
  std::string directionName;
  int speed = 0;  ///< 0 to 9
  double forSeconds = 0.0;
};

struct PulseAction {
  std::array<int, 4> lengthsMs{};  ///< north, south, east, west; 0 for none
  double rateRa = 0.0;
  double rateDec = 0.0;

  /// @return how long the driver is busy with them: it rests for 50 ms after each.
  double DriverSeconds() const {
    int ms = 0;
    for (const int length : lengthsMs) ms += length > 0 ? length + 50 : 0;
    return ms / 1000.0;
  }
};

struct GuideSpeedAction {
  double rateRa = 0.0;
  double rateDec = 0.0;
};

struct SiteAction {
  SiteLocation location{};
  std::optional<double> zoneHours;    ///< empty for the machine's zone
  std::optional<SiteTime> localTime;  ///< zone unset; empty for the machine's clock
};

struct AlignResetAction {};

struct IniAction {
  std::string file;
  std::string section;
};

struct DialogAction {
  std::optional<SkyPosition> target;  ///< handed over before the window opens
};

struct RunAction {
  std::string file;
};

using Action =
    std::variant<CheckAction, StatusAction, GotoAction, SyncAction, StopAction, HomeAction,
                 ParkAction, UnparkAction, MonitorAction, SlewAction, PulseAction, GuideSpeedAction,
                 SiteAction, AlignResetAction, IniAction, DialogAction, RunAction>;

/// One command with everything it needs.
struct Request {
  std::string command;  ///< its word, for example "goto"
  std::string address;  ///< of the controller; empty for run
  CommonOptions options;
  Action action;
};

}  // namespace velquinctl
