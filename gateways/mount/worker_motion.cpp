// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "core/protocol/command_text.h"
#include "gateways/mount/worker.h"

namespace velquin {

namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

// The end of a pulse is reported with a later status, if one arrives within this time.
constexpr milliseconds kClosingPoll{200};
// The pace of repeated commands when an exchange fails at once because the network is down.
constexpr milliseconds kPause{100};

constexpr Axis kAxes[] = {Axis::kRa, Axis::kDec};

}  // namespace

void Worker::Perform(const MoveRequest& request, TicketPtr ticket) {
  const size_t index = Index(request.axis);
  if (request.rate == 0.0) {
    if (!plan_.IsHeld(request.axis)) return End(ticket, Outcome::kDone);
    plan_.End(request.axis);
  } else {
    if (RefuseWhileParked(ticket)) return;
    if (journey_ || status_.state == kStateSlewing) return End(ticket, Outcome::kMoving);
    const bool isNew = plan_.Hold(request.axis, request.rate, request.until);
    // Renewed already, though its first command may not be acknowledged yet.
    if (!isNew && !moves_[index]) return End(ticket, Outcome::kDone);
    EndPulse(index, Outcome::kOvertaken);
  }
  End(moves_[index], Outcome::kOvertaken);
  moves_[index] = std::move(ticket);
  PerformMotion(Clock::now());
}

void Worker::Perform(const GuideRequest& request, TicketPtr ticket) {
  if (RefuseWhileParked(ticket)) return;
  if (journey_ || status_.state == kStateSlewing) return End(ticket, Outcome::kMoving);
  const std::array<microseconds, kAxisCount> lengths = {request.pulse.ra, request.pulse.dec};
  int axes = 0;
  for (const Axis axis : kAxes) {
    if (lengths[Index(axis)] == microseconds{0}) continue;
    ++axes;
    const bool isBusy = pulses_[Index(axis)] || plan_.IsHeld(axis);
    if (isBusy && request.whenBusy == WhenBusy::kRefuse) return End(ticket, Outcome::kAxisBusy);
  }
  if (axes == 0) return End(ticket, Outcome::kDone);
  const auto job = std::make_shared<PulseJob>(PulseJob{std::move(ticket), axes});
  for (const Axis axis : kAxes) {
    const microseconds length = lengths[Index(axis)];
    if (length == microseconds{0}) continue;
    EndPulse(Index(axis), Outcome::kOvertaken);
    End(moves_[Index(axis)], Outcome::kOvertaken);
    pulses_[Index(axis)] = job;
    plan_.SetPulse(axis, length > microseconds{0} ? 1.0 : -1.0, std::chrono::abs(length));
  }
  PerformMotion(Clock::now());
}

// The command is sent before the end is reported: the continuing axis must not wait for a poll.
bool Worker::PerformMotion(MonotonicTime now) {
  if (now < nextMove_) return false;
  const MotionPlan::Ended ended = plan_.EndSegment(now);
  const auto command = plan_.Next(now);
  if (command) SendMove(*command);
  const bool hasEnded = ended.pulse[0] || ended.pulse[1];
  if (hasEnded) ClosePulses(ended.pulse);
  return command || hasEnded;
}

void Worker::SendMove(const MotionPlan::Command& command) {
  constexpr double kMicrosecondsPerSecond = 1e6;
  const double seconds = static_cast<double>(command.length.count()) / kMicrosecondsPerSecond;
  const CString text = command_text::Move(seconds, command.rates[0], command.rates[1]);
  const Answer answer = Ask(text.GetString());
  const Outcome outcome = OutcomeOf(answer);
  if (outcome == Outcome::kDone) {
    plan_.Acknowledged(answer.sentAt, answer.endedAt);
    Publish();
    return EndMoveTickets(Outcome::kDone);
  }
  plan_.Failed(outcome != Outcome::kNoAnswer);
  moveFailed_ = true;
  nextMove_ = answer.sentAt + kPause;
  for (const Axis axis : kAxes) {
    if (!plan_.IsPulsing(axis)) EndPulse(Index(axis), outcome);
  }
  // A held axis is commanded again, and so is an end; their tickets then continue to wait.
  if (plan_.IsIdle()) EndMoveTickets(outcome);
}

void Worker::EndMoveTickets(Outcome outcome) {
  for (TicketPtr& ticket : moves_) End(ticket, outcome);
}

// A pulse that ended belongs to its job until here, so that snapshots show it as running.
void Worker::ClosePulses(const std::array<bool, kAxisCount>& ended) {
  Patience patience = PollPatience();
  patience.until = std::min(patience.until, Clock::now() + kClosingPoll);
  Inbox::Tickets done;
  for (size_t axis = 0; axis < kAxisCount; ++axis) {
    if (!ended[axis] || !pulses_[axis]) continue;
    if (--pulses_[axis]->axesLeft == 0) done.push_back(pulses_[axis]->ticket);
    pulses_[axis].reset();
  }
  if (!Poll(patience)) Publish();
  for (TicketPtr& ticket : done) End(ticket, Outcome::kDone);
}

// Ends a pulse early. The other axis of the same call continues.
void Worker::EndPulse(size_t axis, Outcome outcome) {
  if (!pulses_[axis]) return;
  TicketPtr ticket = pulses_[axis]->ticket;
  pulses_[axis].reset();
  End(ticket, outcome);
}

void Worker::CancelMotion(Outcome outcome) {
  std::optional<Journey> journey;
  journey.swap(journey_);
  auto pulses = pulses_;
  pulses_ = {};
  plan_.Clear();
  Publish();
  if (journey) End(journey->ticket, outcome);
  for (const auto& pulse : pulses) {
    if (pulse) announcer_->End(pulse->ticket, outcome);
  }
  EndMoveTickets(outcome);
}

bool Worker::HasStopToSend() const {
  return inbox_->HasStop() || (!stops_.empty() && Clock::now() >= nextStop_);
}

// The driver's two commands: the second one ends hand moves on controllers on which the first one
// does not.
void Worker::PerformStop() {
  const Inbox::Tickets added = inbox_->TakeStops();
  if (!added.empty()) stopAcknowledged_ = false;
  stops_.insert(stops_.end(), added.begin(), added.end());
  const Answer answer =
      Ask(stopAcknowledged_ ? command_text::Move(1.0, 0.0, 0.0).GetString() : command_text::kStop);
  CancelMotion(Outcome::kCancelledByStop);
  const Outcome outcome = OutcomeOf(answer);
  if (outcome == Outcome::kNoAnswer) {
    nextStop_ = answer.sentAt + kPause;
    if (monitor_.PollWas(false)) LoseLink();
    return;
  }
  monitor_.PollWas(true);
  nextStop_ = answer.endedAt;
  if (!stopAcknowledged_) {
    stopAcknowledged_ = true;
    return;
  }
  Inbox::Tickets stops;
  stops.swap(stops_);
  Poll(PollPatience());
  for (TicketPtr& stop : stops) End(stop, Outcome::kDone);
}

}  // namespace velquin
