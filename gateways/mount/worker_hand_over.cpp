// SPDX-License-Identifier: MIT
#include <utility>

#include "core/protocol/command_text.h"
#include "gateways/mount/worker.h"

namespace velquin {

namespace {

using std::chrono::milliseconds;
using std::chrono::nanoseconds;
using Clock = std::chrono::steady_clock;

// This long before the minute the controller's clock is read, and no other work begins.
constexpr milliseconds kPreparation{250};
// A command that would be sent later than this waits for the next minute.
constexpr milliseconds kLatest{20};
constexpr milliseconds kOldest{3000};
constexpr int kTries = 3;
constexpr double kSecondsPerDay = 86400.0;

UtcTime RightTime(nanoseconds ahead) {
  return std::chrono::time_point_cast<nanoseconds>(std::chrono::system_clock::now()) + ahead;
}

}  // namespace

void Worker::Perform(const SiteRequest& request, TicketPtr ticket) {
  End(siteTicket_, Outcome::kOvertaken);
  site_ = request.site;
  siteTicket_ = std::move(ticket);
}

void Worker::Perform(const ClockRequest& request, TicketPtr ticket) {
  if (clock_) End(clock_->ticket, Outcome::kOvertaken);
  clock_ = ClockJob{request.ahead, std::move(ticket), kTries, {}, std::nullopt};
  PlanClock();
}

bool Worker::PerformClock(MonotonicTime now) {
  if (!clock_ || now < clock_->due) return false;
  if (clock_->minute) {
    HandClockOver();
  } else {
    PrepareClock();
  }
  return true;
}

void Worker::HandSiteOver() {
  const Site site = *site_;
  TicketPtr ticket = std::move(siteTicket_);
  site_.reset();
  const CString command =
      command_text::Site(site.latitudeDegrees, site.longitudeDegrees, site.zoneHours);
  const Outcome outcome = OutcomeOf(AskAgain(command.GetString()));
  if (outcome == Outcome::kDone) {
    state_.hasSite = false;
    ReadSite();
    // Acknowledged, so it is known even if reading back failed.
    if (!state_.hasSite) state_.site = site;
    state_.hasSite = true;
    Poll(PollPatience());
  }
  End(ticket, outcome);
}

// Wakes shortly before a full minute, early enough to prepare.
void Worker::PlanClock() {
  const ClockHandOver next = NextFullMinute(RightTime(clock_->ahead), 2 * kPreparation, 0);
  clock_->minute.reset();
  clock_->due =
      Clock::now() + std::chrono::duration_cast<Clock::duration>(next.wait) - kPreparation;
}

void Worker::PrepareClock() {
  if (!state_.hasSite) ReadSite();
  Patience patience = PollPatience();
  patience.until = Clock::now() + kPreparation / 2;
  Poll(patience);
  if (!clock_) return;  // the link is lost
  // On a slow link the new status does not arrive in time; an earlier one gives the clock as well.
  const bool isFresh = state_.Age() < kOldest;
  const ClockHandOver next = NextFullMinute(RightTime(clock_->ahead), nanoseconds{0},
                                            state_.hasSite ? state_.site.zoneHours : 0);
  // Without the zone the local time is unknown; without a status the controller's clock is unknown.
  if (!isFresh || !state_.hasSite || IsMoving() || next.wait > kPreparation) return PlanClock();
  clock_->due = Clock::now() + std::chrono::duration_cast<Clock::duration>(next.wait);
  clock_->minute = next.local;
}

void Worker::HandClockOver() {
  const MonotonicTime now = Clock::now();
  if (IsMoving() || now > clock_->due + kLatest) return PlanClock();
  const double sinceReading = std::chrono::duration<double>(now - state_.readAt).count();
  const bool differs = ClocksDiffer(state_.controllerMjd + sinceReading / kSecondsPerDay,
                                    MjdOf(RightTime(clock_->ahead)));
  Outcome outcome = OutcomeOf(Ask(command_text::LocalTime(*clock_->minute).GetString()));
  --clock_->triesLeft;
  if (outcome == Outcome::kNoAnswer && clock_->triesLeft > 0) return PlanClock();
  TicketPtr ticket = std::move(clock_->ticket);
  clock_.reset();
  if (outcome == Outcome::kDone && differs)
    outcome = OutcomeOf(AskAgain(command_text::kInitialise));
  Poll(PollPatience());
  End(ticket, outcome);
}

}  // namespace velquin
