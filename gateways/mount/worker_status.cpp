// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "core/protocol/command_text.h"
#include "gateways/mount/worker.h"

namespace velquin {

namespace {

using Clock = std::chrono::steady_clock;

// The number of polls abandoned in a row, so that moves are sent in time; the next one may finish.
constexpr int kMostAbandonedPolls = 3;
constexpr ptrdiff_t kStatusFields = 11;

// A status that was truncated or corrupted in transit must not count as the mount's position.
bool IsPlausible(const std::string& line, const MountStatus& status) {
  if (std::count(line.begin(), line.end(), ',') < kStatusFields - 1) return false;
  return status.raDegrees >= 0.0 && status.raDegrees <= 360.0 && status.decDegrees >= -90.0 &&
         status.decDegrees <= 90.0 && std::isfinite(status.controllerMjd) &&
         std::isfinite(status.axisAngleDegrees) && std::isfinite(status.park1) &&
         std::isfinite(status.park2);
}

SkyPoint WrappedPosition(const MountStatus& status) {
  SkyPoint position = PositionOf(status);
  if (position.raHours >= 24.0) position.raHours -= 24.0;
  return position;
}

}  // namespace

Patience Worker::PollPatience() const {
  Patience patience;
  patience.interrupted = &inbox_->Urgent();
  if (abandonedPolls_ < kMostAbandonedPolls) {
    if (const auto due = plan_.Due()) patience.until = std::max(*due, nextMove_);
    if (clock_) patience.until = std::min(patience.until, clock_->due);
  }
  return patience;
}

MonotonicTime Worker::PollDue() const {
  return pollAtOnce_ ? lastPoll_ : lastPoll_ + inbox_->PollPeriod(IsMoving());
}

bool Worker::Poll(const Patience& patience) {
  const Answer answer = Ask(command_text::kStatusQuery, patience);
  if (answer.how == Exchanged::kAbandoned) {
    ++abandonedPolls_;
    return false;
  }
  abandonedPolls_ = 0;
  pollAtOnce_ = false;
  lastPoll_ = answer.sentAt;
  MountStatus status;
  const bool isGood = answer.IsAnswered() && DecodeStatus(answer.line.c_str(), status) &&
                      IsPlausible(answer.line, status);
  const bool isLost = monitor_.PollWas(isGood);
  if (isGood) {
    TakeStatus(status, answer.endedAt);
  } else if (isLost) {
    LoseLink();
  } else {
    Publish();
  }
  return isGood;
}

void Worker::TakeStatus(const MountStatus& status, MonotonicTime readAt) {
  status_ = status;
  state_.hasReading = true;
  state_.readAt = readAt;
  state_.position = WrappedPosition(status);
  state_.axisAngleDegrees = status.axisAngleDegrees;
  state_.pierSide = status.PierSide() > 0 ? PierSide::kWest : PierSide::kEast;
  state_.controllerMjd = status.controllerMjd;
  state_.ready = status.IsReady();
  auto verdict = ArrivalJudge::Verdict::kUnderWay;
  if (journey_) verdict = journey_->judge.Look(status, readAt);
  if (verdict == ArrivalJudge::Verdict::kUnderWay) {
    pollAtOnce_ = journey_ && journey_->judge.WantsAnother();
    return Publish();
  }
  EndJourney(verdict == ArrivalJudge::Verdict::kArrived ? Outcome::kDone
                                                        : Outcome::kStoppedElsewhere);
}

void Worker::EndJourney(Outcome outcome) {
  if (!journey_) return;
  TicketPtr ticket = journey_->ticket;
  journey_.reset();
  Publish();
  End(ticket, outcome);
}

bool Worker::IsMoving() const {
  const bool isPulsing = pulses_[0] || pulses_[1];
  return journey_ || isPulsing || !plan_.IsIdle() || status_.state == kStateSlewing;
}

Motion Worker::CurrentMotion() const {
  if (!state_.hasReading) return Motion::kUnknown;
  if (journey_) return journey_->motion;
  if (plan_.IsHeld(Axis::kRa) || plan_.IsHeld(Axis::kDec)) return Motion::kMovingByHand;
  switch (status_.state) {
    case kStateTracking:
      return Motion::kTracking;
    case kStateSlewing:
      return Motion::kSlewing;
    case kStateParked:
      return Motion::kParked;
    default:
      return Motion::kAtRest;
  }
}

}  // namespace velquin
