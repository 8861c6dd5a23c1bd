// SPDX-License-Identifier: MIT
#include "gateways/mount/worker.h"

#include <algorithm>
#include <utility>

#include "core/protocol/reply.h"

namespace velquin {

using Clock = std::chrono::steady_clock;

Worker::Worker(const MountOptions& options, std::shared_ptr<Inbox> inbox,
               std::shared_ptr<Announcer> announcer, ExchangeJournal& journal)
    : options_(options),
      inbox_(std::move(inbox)),
      announcer_(std::move(announcer)),
      link_(journal) {}

std::string Worker::Version() const {
  const std::lock_guard guard(versionLock_);
  return version_;
}

void Worker::Run() {
  while (!inbox_->IsQuitting()) {
    // Between two attempts to stop, everything except a new order waits.
    const bool stopWaits = !stops_.empty() && Clock::now() < nextStop_;
    inbox_->WaitUntil(NextDue(), stopWaits ? Inbox::WakeFor::kUrgent : Inbox::WakeFor::kAnything);
    if (!inbox_->IsQuitting()) Step();
  }
  EndAll(Outcome::kNotConnected);
}

void Worker::Step() {
  if (const auto order = inbox_->TakeOrder()) return Obey(*order);
  switch (state_.connection) {
    case Connection::kDisconnected:
      return;
    case Connection::kConnecting:
      return ContinueConnecting();
    case Connection::kLost:
      return TryAgain();
    case Connection::kConnected:
      return Work();
  }
}

void Worker::Work() {
  const MonotonicTime now = Clock::now();
  if (HasStopToSend()) return PerformStop();
  if (!stops_.empty()) return;
  if (std::exchange(moveFailed_, false)) {
    Poll({MonotonicTime::max(), &inbox_->Urgent()});
    return;
  }
  if (PerformMotion(now) || PerformClock(now)) return;
  // Successive requests must not keep the status from being read, nor slow statuses keep requests
  // from being carried out.
  const bool isOverdue = now >= PollDue() + inbox_->PollPeriod(IsMoving());
  if (!isOverdue || std::exchange(isTurnOfRequests_, false)) {
    if (auto request = inbox_->TakeRequest()) return Perform(std::move(*request));
    if (site_ && !IsMoving()) return HandSiteOver();
  }
  if (now < PollDue()) return;
  isTurnOfRequests_ = true;
  Poll(PollPatience());
}

MonotonicTime Worker::NextDue() const {
  switch (state_.connection) {
    case Connection::kDisconnected:
      return MonotonicTime::max();
    case Connection::kConnecting:
      return lookup_ ? lookupEndsAt_ : MonotonicTime::min();
    case Connection::kLost:
      return nextTry_;
    case Connection::kConnected:
      break;
  }
  if (!stops_.empty()) return nextStop_;
  if (moveFailed_) return MonotonicTime::min();
  MonotonicTime due = PollDue();
  if (const auto motion = plan_.Due()) due = std::min(due, std::max(*motion, nextMove_));
  if (clock_) due = std::min(due, clock_->due);
  if (site_ && !IsMoving()) due = MonotonicTime::min();
  return due;
}

Answer Worker::Ask(const std::string& command, const Patience& patience, const char* otherKey) {
  Answer answer = link_.Exchange(command, patience, otherKey);
  if (answer.IsAnswered()) {
    monitor_.Answered(answer.endedAt - answer.sentAt);
  } else if (answer.how != Exchanged::kAbandoned) {
    monitor_.Lost();
  }
  return answer;
}

Answer Worker::AskAgain(const std::string& command, int tries, const char* otherKey) {
  Answer answer = Ask(command, {}, otherKey);
  for (int i = 1; i < tries; ++i) {
    if (OutcomeOf(answer) != Outcome::kNoAnswer || inbox_->Urgent()) break;
    answer = Ask(command, {}, otherKey);
  }
  return answer;
}

Outcome Worker::OutcomeOf(const Answer& answer) const {
  const CString line(answer.line.c_str());
  const bool isUnknown = answer.how == Exchanged::kMismatch && HasReplyPrefix(line, "$ERROR=");
  const bool isRefused = answer.IsAnswered() && ReplyValue(line).CompareNoCase("ERROR") == 0;
  if (isUnknown || isRefused) {
    return status_.state == kStateParked && state_.hasReading ? Outcome::kParked
                                                              : Outcome::kRefused;
  }
  if (!answer.IsAnswered()) return Outcome::kNoAnswer;
  return IsBelowHorizon(line) ? Outcome::kBelowHorizon : Outcome::kDone;
}

void Worker::End(TicketPtr& ticket, Outcome outcome) {
  if (ticket) announcer_->End(ticket, outcome);
  ticket.reset();
}

void Worker::Publish() {
  const LinkQuality lost = LinkQuality::kLost;
  state_.link = monitor_.Health();
  if (state_.connection == Connection::kLost) state_.link.quality = lost;
  if (state_.connection == Connection::kDisconnected) {
    state_.link.quality = LinkQuality::kUnknown;
  }
  state_.motion = CurrentMotion();
  for (const Axis axis : {Axis::kRa, Axis::kDec}) {
    state_.pulsing[Index(axis)] = pulses_[Index(axis)] != nullptr;
    state_.moving[Index(axis)] = plan_.IsHeld(axis);
  }
  announcer_->Publish(state_);
}

}  // namespace velquin
