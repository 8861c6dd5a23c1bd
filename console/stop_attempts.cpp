// SPDX-License-Identifier: MIT
#include "console/stop_attempts.h"

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

}  // namespace velquinctl
