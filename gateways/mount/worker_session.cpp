// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "core/protocol/command_text.h"
#include "core/protocol/reply.h"
#include "gateways/mount/worker.h"

namespace velquin {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int kTriesToConnect = 3;
constexpr std::chrono::seconds kLongestLookUp{15};
constexpr double kSamePlaceDegrees = 0.05;
constexpr double kSiderealHoursPerSecond = 1.00273790935 / 3600.0;

// @return where a mount points that was not moved since a status.
SkyPoint Untouched(const SkyPoint& position, const MountStatus& status,
                   MonotonicTime::duration since) {
  if (status.state == kStateTracking || status.state == kStateSlewing) return position;
  const double seconds = std::chrono::duration<double>(since).count();
  const double raHours = position.raHours + seconds * kSiderealHoursPerSecond;
  return {std::fmod(raHours, 24.0), position.decDegrees};
}

}  // namespace

void Worker::Obey(const SessionOrder& order) {
  const bool wasOpen = state_.connection != Connection::kDisconnected;
  lookup_.reset();
  EndAll(Outcome::kNotConnected);
  state_.connection = Connection::kDisconnected;
  state_.failure = ConnectFailure::kNone;
  if (wasOpen) {
    Publish();
    announcer_->Tell({Event::Kind::kDisconnected, state_, false, 0.0, 0, Outcome::kDone});
  }
  if (!order.connect) return;
  const uint64_t sequence = state_.sequence;
  state_ = Snapshot();
  state_.sequence = sequence;
  state_.connection = Connection::kConnecting;
  status_ = MountStatus();
  monitor_ = LinkMonitor();
  address_ = order.address;
  const uint32_t address = platform::AddressFromText(address_.c_str());
  if (address_.empty()) return FailToConnect(ConnectFailure::kNameNotFound);
  Publish();
  if (address == platform::kNoAddress) return LookUp();
  link_.SetPeer(address, options_.port);
}

void Worker::LookUp() {
  lookupEndsAt_ = Clock::now() + kLongestLookUp;
  lookup_ = std::make_unique<NameLookup>(address_, options_.resolver,
                                         [inbox = inbox_] { inbox->Wake(); });
}

void Worker::ContinueConnecting() {
  if (lookup_) {
    if (!lookup_->IsReady() && Clock::now() < lookupEndsAt_) return;
    const auto found = lookup_->IsReady() ? lookup_->Address() : std::nullopt;
    lookup_.reset();
    if (!found) return FailToConnect(ConnectFailure::kNameNotFound);
    link_.SetPeer(*found, options_.port);
  }
  Connect();
}

void Worker::Connect() {
  const ConnectFailure failure = Identify();
  if (inbox_->Urgent()) return;  // a new order, or the end: this result does not matter
  if (failure != ConnectFailure::kNone) return FailToConnect(failure);
  ReadSite();
  HandSettingsOver();
  state_.connection = Connection::kConnected;
  stopAcknowledged_ = false;
  Publish();
  inbox_->Accept();
  announcer_->Tell({Event::Kind::kConnected, state_, false, 0.0, 0, Outcome::kDone});
}

ConnectFailure Worker::Identify() {
  const Answer version = AskAgain(command_text::kVersionQuery, kTriesToConnect);
  if (!version.IsAnswered()) {
    if (version.line.empty()) return ConnectFailure::kNoAnswer;
    return version.line[0] == '$' ? ConnectFailure::kWrongAnswer : ConnectFailure::kNotAController;
  }
  const Answer model = AskAgain(command_text::kModelQuery, kTriesToConnect);
  if (model.how == Exchanged::kSilent) return ConnectFailure::kNoAnswer;
  ModelReply unused;
  if (OutcomeOf(model) == Outcome::kNoAnswer) return ConnectFailure::kWrongAnswer;
  if (!DecodeModel(model.line.c_str(), unused)) return ConnectFailure::kNotAController;
  {
    const std::lock_guard guard(versionLock_);
    version_ = ReplyValue(version.line.c_str()).GetString();
  }
  for (int i = 0; i < kTriesToConnect; ++i) {
    if (inbox_->Urgent() || Poll({})) return ConnectFailure::kNone;
  }
  return ConnectFailure::kNotAController;
}

void Worker::FailToConnect(ConnectFailure failure) {
  state_.connection = Connection::kDisconnected;
  state_.failure = failure;
  Publish();
  announcer_->Tell({Event::Kind::kConnectFailed, state_, false, 0.0, 0, Outcome::kDone});
}

void Worker::ReadSite() {
  const Answer answer = AskAgain(command_text::kSiteQuery);
  SiteReply reply;
  if (!answer.IsAnswered() || !DecodeSite(answer.line.c_str(), reply)) return;
  state_.hasSite = true;
  state_.site = {reply.latitudeDegrees, reply.longitudeDegrees, reply.zone};
}

// Settings from callers precede those from the options: the caller has changed them since.
void Worker::HandSettingsOver() {
  const auto rates = state_.hasGuideRates ? std::optional(state_.guideRates) : options_.guideRates;
  if (rates) Perform(GuideRatesRequest{*rates}, nullptr);
  const auto meridian = state_.hasMeridian ? std::optional(state_.meridian) : options_.meridian;
  if (meridian) Perform(MeridianRequest{*meridian}, nullptr);
}

void Worker::LoseLink() {
  // Not a connection yet: the attempt to connect reports the failure.
  if (state_.connection != Connection::kConnected) return;
  state_.connection = Connection::kLost;
  inbox_->Refuse(Outcome::kLinkLost);
  backoff_.Reset();
  nextTry_ = Clock::now() + backoff_.Next();
  EndAll(Outcome::kLinkLost);
  announcer_->Tell({Event::Kind::kLinkLost, state_, false, 0.0, 0, Outcome::kDone});
}

void Worker::TryAgain() {
  if (lookup_ && lookup_->IsReady()) {
    if (const auto found = lookup_->Address()) link_.SetPeer(*found, options_.port);
    lookup_.reset();
  }
  if (Clock::now() < nextTry_) return;
  const bool isName = platform::AddressFromText(address_.c_str()) == platform::kNoAddress;
  if (isName && !lookup_) LookUp();
  Patience patience;
  patience.interrupted = &inbox_->Urgent();
  const Snapshot before = state_;
  const MountStatus statusBefore = status_;
  if (!Poll(patience)) {
    nextTry_ = Clock::now() + backoff_.Next();
    return Publish();
  }
  const SkyPoint expected = Untouched(before.position, statusBefore, state_.readAt - before.readAt);
  LinkIsBack(SeparationDegrees(expected, state_.position), statusBefore.state);
}

void Worker::LinkIsBack(double movedDegrees, int stateBefore) {
  lookup_.reset();
  monitor_.LinkIsBack();
  state_.connection = Connection::kConnected;
  ReadSite();
  HandSettingsOver();
  pollAtOnce_ = true;
  Publish();
  inbox_->Accept();
  Event event = {Event::Kind::kLinkBack, state_, false, movedDegrees, 0, Outcome::kDone};
  event.samePlace = movedDegrees <= kSamePlaceDegrees && stateBefore == status_.state;
  announcer_->Tell(event);
}

void Worker::EndAll(Outcome outcome) {
  Inbox::Tickets stops;
  stops.swap(stops_);
  TicketPtr site = std::move(siteTicket_);
  TicketPtr clock = clock_ ? clock_->ticket : nullptr;
  site_.reset();
  clock_.reset();
  CancelMotion(outcome);
  End(site, outcome);
  End(clock, outcome);
  for (TicketPtr& stop : stops) End(stop, outcome);
}

}  // namespace velquin
