// SPDX-License-Identifier: MIT
#include "gateways/mount/arrival_judge.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace velquin {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds kSettle{200};
constexpr milliseconds kStartGrace{1000};
constexpr int kStatusesForVerdict = 2;
constexpr double kHomeAxisAngleDegrees = 90.0;

double Radians(double degrees) {
  return degrees * std::numbers::pi / 180.0;
}

}  // namespace

double SeparationDegrees(const SkyPoint& one, const SkyPoint& other) {
  const double dec1 = Radians(one.decDegrees);
  const double dec2 = Radians(other.decDegrees);
  const double halfRa = std::sin(Radians((other.raHours - one.raHours) * 15.0) / 2.0);
  const double halfDec = std::sin((dec2 - dec1) / 2.0);
  const double square = halfDec * halfDec + std::cos(dec1) * std::cos(dec2) * halfRa * halfRa;
  return 2.0 * std::asin(std::sqrt(std::clamp(square, 0.0, 1.0))) * 180.0 / std::numbers::pi;
}

SkyPoint PositionOf(const MountStatus& status) {
  return {status.raDegrees / 15.0, status.decDegrees};
}

bool ArrivalJudge::IsAtGoal(const MountStatus& status) const {
  const bool isThere = SeparationDegrees(PositionOf(status), target_) <= toleranceDegrees_;
  switch (goal_) {
    case Goal::kSky:
      return isThere && (status.state == kStateAtRest || status.state == kStateTracking);
    case Goal::kTrack:
      return isThere && status.state == kStateTracking;
    case Goal::kHome:
      return status.state == kStateAtRest &&
             std::fabs(status.axisAngleDegrees - kHomeAxisAngleDegrees) <= toleranceDegrees_;
    case Goal::kPark:
      return status.state == kStateParked;
  }
  return false;
}

ArrivalJudge::Verdict ArrivalJudge::Look(const MountStatus& status, MonotonicTime readAt) {
  if (status.state == kStateSlewing) {
    sawSlewing_ = true;
    atGoalSince_.reset();
    statusesAtGoal_ = 0;
    statusesElsewhere_ = 0;
    return Verdict::kUnderWay;
  }
  if (IsAtGoal(status)) {
    statusesElsewhere_ = 0;
    if (!atGoalSince_) atGoalSince_ = readAt;
    ++statusesAtGoal_;
    const bool settled = sawSlewing_ || readAt - *atGoalSince_ >= kSettle;
    const bool hasArrived = settled && statusesAtGoal_ >= kStatusesForVerdict;
    return hasArrived ? Verdict::kArrived : Verdict::kUnderWay;
  }
  atGoalSince_.reset();
  statusesAtGoal_ = 0;
  if (!sawSlewing_ && readAt - acknowledgedAt_ < kStartGrace) return Verdict::kUnderWay;
  ++statusesElsewhere_;
  return statusesElsewhere_ < kStatusesForVerdict ? Verdict::kUnderWay : Verdict::kElsewhere;
}

}  // namespace velquin
