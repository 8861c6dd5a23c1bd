// SPDX-License-Identifier: MIT
#include <utility>

#include "core/protocol/command_text.h"
#include "gateways/mount/worker.h"

namespace velquin {

namespace {

std::string SkyTarget(const SkyPoint& target, const char* name) {
  return command_text::Target(command_text::kEquatorial, target.raHours, target.decDegrees, name)
      .GetString();
}

}  // namespace

void Worker::Perform(Request request) {
  std::visit([&](const auto& body) { Perform(body, std::move(request.ticket)); }, request.body);
}

bool Worker::RefuseWhileParked(TicketPtr& ticket) {
  if (status_.state != kStateParked) return false;
  End(ticket, Outcome::kParked);
  return true;
}

void Worker::Perform(const GotoRequest& request, TicketPtr ticket) {
  if (RefuseWhileParked(ticket)) return;
  Travel(SkyTarget(request.target, ""), {ArrivalJudge::Goal::kSky, request.target},
         Motion::kSlewing, std::move(ticket));
}

void Worker::Perform(const HomeRequest& /*request*/, TicketPtr ticket) {
  if (RefuseWhileParked(ticket)) return;
  Travel(command_text::Home().GetString(), {ArrivalJudge::Goal::kHome, {}}, Motion::kHoming,
         std::move(ticket));
}

void Worker::Perform(const ParkRequest& /*request*/, TicketPtr ticket) {
  if (status_.state == kStateParked) return End(ticket, Outcome::kDone);
  const CString command =
      command_text::Target(command_text::kPark, status_.park1, status_.park2, "Park");
  Travel(command.GetString(), {ArrivalJudge::Goal::kPark, {}}, Motion::kParking, std::move(ticket));
}

void Worker::Perform(const UnparkRequest& /*request*/, TicketPtr ticket) {
  Travel(SkyTarget(state_.position, "Star"), {ArrivalJudge::Goal::kTrack, state_.position},
         Motion::kSlewing, std::move(ticket));
}

void Worker::Travel(const std::string& command, const Destination& destination, Motion motion,
                    TicketPtr ticket) {
  const Answer answer = AskAgain(command);
  const Outcome outcome = OutcomeOf(answer);
  if (outcome != Outcome::kDone) {
    // The previous motion continues, as far as is known; the next status shows it.
    pollAtOnce_ = true;
    return End(ticket, outcome);
  }
  CancelMotion(Outcome::kOvertaken);
  if (destination.goal == ArrivalJudge::Goal::kSky) {
    state_.hasTarget = true;
    state_.target = destination.target;
  }
  journey_ = {std::move(ticket),
              ArrivalJudge(destination.goal, destination.target, options_.arrivalToleranceDegrees,
                           answer.endedAt),
              motion};
  Publish();
  Poll(PollPatience());
}

void Worker::Perform(const SyncRequest& request, TicketPtr ticket) {
  if (RefuseWhileParked(ticket)) return;
  if (IsMoving()) return End(ticket, Outcome::kMoving);
  const CString command = command_text::Align(command_text::kEquatorial, request.position.raHours,
                                              request.position.decDegrees, "");
  const int tries = status_.state == kStateTracking ? 2 : 1;
  const Outcome outcome = OutcomeOf(AskAgain(command.GetString(), tries));
  if (outcome == Outcome::kDone) {
    state_.hasTarget = true;
    state_.target = request.position;
    Poll(PollPatience());  // so that callers who see the outcome see the new position
  }
  End(ticket, outcome);
}

void Worker::Perform(const GuideRatesRequest& request, TicketPtr ticket) {
  const CString command = command_text::GuideSpeed(request.rates.ra, request.rates.dec);
  const Outcome outcome = OutcomeOf(AskAgain(command.GetString()));
  if (outcome == Outcome::kDone) {
    state_.hasGuideRates = true;
    state_.guideRates = request.rates;
    Publish();
  }
  End(ticket, outcome);
}

void Worker::Perform(const ResetAlignmentRequest& /*request*/, TicketPtr ticket) {
  if (IsMoving()) return End(ticket, Outcome::kMoving);
  const Outcome outcome = OutcomeOf(AskAgain(command_text::kResetAlignment));
  if (outcome == Outcome::kDone) Poll(PollPatience());
  End(ticket, outcome);
}

// Some controllers answer these settings with the key of another command.
void Worker::Perform(const MeridianRequest& request, TicketPtr ticket) {
  const CString command =
      command_text::Meridian(request.settings.stopDegrees, request.settings.gotoDegrees);
  const Outcome outcome = OutcomeOf(AskAgain(command.GetString(), 2, "$MTGTS"));
  if (outcome == Outcome::kDone) {
    state_.hasMeridian = true;
    state_.meridian = request.settings;
    Publish();
  }
  End(ticket, outcome);
}

}  // namespace velquin
