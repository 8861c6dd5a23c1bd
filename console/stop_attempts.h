// SPDX-License-Identifier: MIT
// A stop that does not give up: asks again, the connecting included, until the controller has
// acknowledged it or the time is over. The asking itself is injected.
#pragma once

#include <functional>
#include <string>

#include "console/time_limit.h"

namespace velquinctl {

struct StopReport {
  bool acknowledged = false;
  int attempts = 0;
  std::string lastFailure;  ///< why no session could be had the last time; empty when there was one
};

/// @param attempt asks once: true when the controller acknowledged it; throws Failure with
///        kMountFailed when it does not answer at all
/// @param limit when to begin no further attempt; the first one is always made
/// @param pause called between attempts
/// @throws what `attempt` and `pause` throw, but for a kMountFailed of `attempt`
StopReport StopUntilAcknowledged(const std::function<bool()>& attempt, const TimeLimit& limit,
                                 const std::function<void()>& pause);

/// What to say when a mount may still be moving.
inline constexpr const char* kMayStillMove =
    "the mount may still be moving: run \"velquinctl stop\" again, or switch it off at the "
    "controller";

/// @return what came of a stop, as the end of a line about what broke off.
inline std::string StopText(const StopReport& report) {
  if (report.acknowledged) return "the controller acknowledged the stop";
  return std::string("the controller did not confirm the stop, and ") + kMayStillMove;
}

/// Stops the mount of a command that broke off.
/// @param cause why it broke off
/// @param stop what it throws is told, too: neither the cause nor the danger gets lost by it
/// @return the line about both
std::string BrokenOffText(const std::string& cause, const std::function<StopReport()>& stop);

}  // namespace velquinctl
