// SPDX-License-Identifier: MIT
#include "console/stop_attempts.h"

#include <exception>

#include "console/failure.h"

namespace velquinctl {

StopReport StopUntilAcknowledged(const std::function<bool()>& attempt, const TimeLimit& limit,
                                 const std::function<void()>& pause) {
  StopReport report;
  for (;;) {
    ++report.attempts;
    report.lastFailure.clear();
    try {
      report.acknowledged = attempt();
    } catch (const Failure& failure) {
      if (failure.Code() != ExitCode::kMountFailed) throw;
      report.lastFailure = failure.what();
    }
    if (report.acknowledged || limit.Over()) return report;
    pause();
  }
}

std::string BrokenOffText(const std::string& cause, const std::function<StopReport()>& stop) {
  try {
    return cause + "; " + StopText(stop());
  } catch (const std::exception& error) {
    return cause + "; stopping the mount failed (" + error.what() + "), and " + kMayStillMove;
  }
}

}  // namespace velquinctl
