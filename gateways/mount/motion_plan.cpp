// SPDX-License-Identifier: MIT
#include "gateways/mount/motion_plan.h"

#include <algorithm>

namespace velquin {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

// A held axis is commanded for kHoldLength, so that a mount that lost its host stops by itself. The
// command is renewed after kRenewAfter: a lost renewal is detected and repeated before kHoldLength
// is over.
constexpr milliseconds kHoldLength{1000};
constexpr milliseconds kRenewAfter{250};

microseconds Whole(MonotonicTime::duration time) {
  return std::chrono::duration_cast<microseconds>(time);
}

}  // namespace

void MotionPlan::SetPulse(Axis axis, double rate, Length length) {
  runs_[Index(axis)] = {Kind::kPulse, rate, length, {}};
  if (segment_) segment_->carries[Index(axis)] = false;
  changed_ = true;
}

bool MotionPlan::Hold(Axis axis, double rate, MonotonicTime until) {
  Run& run = runs_[Index(axis)];
  const bool renews = run.kind == Kind::kHold && run.rate == rate;
  if (!renews && segment_) segment_->carries[Index(axis)] = false;
  run = {Kind::kHold, rate, Length{0}, until};
  if (!renews) changed_ = true;
  return !renews;
}

bool MotionPlan::End(Axis axis) {
  Run& run = runs_[Index(axis)];
  if (run.kind == Kind::kIdle) return false;
  run = {};
  changed_ = true;
  return true;
}

bool MotionPlan::IsIdle() const {
  return !changed_ && std::all_of(runs_.begin(), runs_.end(),
                                  [](const Run& run) { return run.kind == Kind::kIdle; });
}

// A held axis that ends after the running command.
bool MotionPlan::CanRenew() const {
  return std::any_of(runs_.begin(), runs_.end(), [this](const Run& run) {
    return run.kind == Kind::kHold && run.until > segment_->sentAt + segment_->length;
  });
}

std::optional<MonotonicTime> MotionPlan::Due() const {
  if (changed_) return MonotonicTime::min();
  if (!segment_) return std::nullopt;
  if (segment_->mayRenew && CanRenew()) {
    return std::min(segment_->sentAt + kRenewAfter, segment_->endsAt);
  }
  return segment_->endsAt;
}

MotionPlan::Ended MotionPlan::EndSegment(MonotonicTime now) {
  Ended ended;
  if (!segment_ || now < segment_->endsAt) return ended;
  for (size_t i = 0; i < kAxisCount; ++i) {
    Run& run = runs_[i];
    if (run.kind == Kind::kPulse && segment_->carries[i]) {
      run.left -= segment_->length;
      if (run.left <= Length{0}) {
        run = {};
        ended.pulse[i] = true;
      }
    }
  }
  segment_.reset();
  DropSpentHolds(now);
  // The remaining motion gets a new command; without any, the mount has stopped by itself.
  for (const Run& run : runs_) changed_ = changed_ || run.kind != Kind::kIdle;
  return ended;
}

void MotionPlan::DropSpentHolds(MonotonicTime now) {
  for (Run& run : runs_) {
    if (run.kind == Kind::kHold && run.until <= now) run = {};
  }
}

// A new command replaces the running one: the part of its pulses that is done counts.
void MotionPlan::CutSegment(MonotonicTime now) {
  if (!segment_) return;
  for (size_t i = 0; i < kAxisCount; ++i) {
    if (runs_[i].kind != Kind::kPulse || !segment_->carries[i]) continue;
    runs_[i].left -= std::clamp(Whole(now - segment_->sentAt), Length{0}, segment_->length);
    runs_[i].left = std::max(runs_[i].left, Length{1});  // ended by EndSegment, not here
  }
  segment_.reset();
}

std::optional<MotionPlan::Command> MotionPlan::Next(MonotonicTime now) {
  const auto due = Due();
  if (!due || now < *due) return std::nullopt;
  CutSegment(now);
  DropSpentHolds(now);
  changed_ = false;
  Command command = {Length::max(), {}, true};
  for (size_t i = 0; i < kAxisCount; ++i) {
    const Run& run = runs_[i];
    if (run.kind == Kind::kIdle) continue;
    const Length left =
        run.kind == Kind::kPulse ? run.left : std::min<Length>(Whole(run.until - now), kHoldLength);
    command.length = std::min(command.length, std::max(left, Length{1}));
    command.rates[i] = run.rate;
    command.ends = false;
  }
  if (command.ends) command.length = kHoldLength;
  sending_ = command;
  return command;
}

void MotionPlan::Acknowledged(MonotonicTime sentAt, MonotonicTime acknowledgedAt) {
  const Command sent = *sending_;
  sending_.reset();
  if (sent.ends) return;
  Segment segment = {sentAt, acknowledgedAt + sent.length, sent.length, {}, true};
  for (size_t i = 0; i < kAxisCount; ++i) {
    segment.carries[i] = runs_[i].kind != Kind::kIdle;
    // It is better to let a pulse run out than to cut it for the other axis.
    segment.mayRenew = segment.mayRenew && runs_[i].kind != Kind::kPulse;
  }
  segment_ = segment;
}

void MotionPlan::Failed(bool refused) {
  const bool ends = sending_ && sending_->ends;
  sending_.reset();
  segment_.reset();
  changed_ = ends && !refused;
  for (Run& run : runs_) {
    if (run.kind == Kind::kPulse || refused) run = {};
    changed_ = changed_ || run.kind == Kind::kHold;
  }
}

}  // namespace velquin
