// SPDX-License-Identifier: MIT
#include "gateways/mount/mount.h"

#include <thread>
#include <utility>

#include "gateways/mount/worker.h"

namespace velquin {

class Mount::Impl {
 public:
  explicit Impl(MountOptions options)
      : worker(options, inbox, announcer, journal), thread([this] { worker.Run(); }) {
    inbox->SetPollPeriods(options.activePoll, options.idlePoll);
  }
  ~Impl() {
    inbox->Quit();
    thread.join();
    announcer->Close();
  }
  Impl(const Impl&) = delete;
  Impl& operator=(const Impl&) = delete;

  const std::shared_ptr<Announcer> announcer = std::make_shared<Announcer>();
  const std::shared_ptr<Inbox> inbox = std::make_shared<Inbox>(announcer);
  ExchangeJournal journal;
  Worker worker;
  std::thread thread;
};

Mount::Mount(MountOptions options) : impl_(std::make_unique<Impl>(std::move(options))) {}

Mount::~Mount() = default;

void Mount::Connect(const std::string& address) {
  impl_->inbox->Order({true, address});
}

void Mount::Disconnect() {
  impl_->inbox->Order({false, ""});
}

std::string Mount::ControllerVersion() const {
  return impl_->worker.Version();
}

Snapshot Mount::State() const {
  return impl_->announcer->Latest();
}

uint64_t Mount::AddListener(Listener listener) {
  return impl_->announcer->AddListener(std::move(listener));
}

void Mount::RemoveListener(uint64_t number) {
  impl_->announcer->RemoveListener(number);
}

void Mount::SetWatched(bool watched) {
  impl_->inbox->SetWatched(watched);
}

void Mount::SetPollPeriods(std::chrono::milliseconds active, std::chrono::milliseconds idle) {
  impl_->inbox->SetPollPeriods(active, idle);
}

void Mount::WriteJournal(const std::string& folder, const std::string& prefix) const {
  impl_->journal.Write(folder, prefix);
}

Ticket Mount::Goto(const SkyPoint& target) {
  return impl_->inbox->Submit(GotoRequest{target});
}

Ticket Mount::Home() {
  return impl_->inbox->Submit(HomeRequest{});
}

Ticket Mount::Park() {
  return impl_->inbox->Submit(ParkRequest{});
}

Ticket Mount::Unpark() {
  return impl_->inbox->Submit(UnparkRequest{});
}

Ticket Mount::Stop() {
  return impl_->inbox->SubmitStop();
}

Ticket Mount::Sync(const SkyPoint& position) {
  return impl_->inbox->Submit(SyncRequest{position});
}

Ticket Mount::MoveAxis(Axis axis, double rate) {
  return impl_->inbox->Submit(
      MoveRequest{axis, rate, std::chrono::steady_clock::now() + kMoveHold});
}

Ticket Mount::Guide(const Pulse& pulse, WhenBusy whenBusy) {
  return impl_->inbox->Submit(GuideRequest{pulse, whenBusy});
}

Ticket Mount::SetGuideRates(const GuideRates& rates) {
  return impl_->inbox->Submit(GuideRatesRequest{rates});
}

Ticket Mount::SetSite(const Site& site) {
  return impl_->inbox->Submit(SiteRequest{site});
}

Ticket Mount::SetClock(std::chrono::nanoseconds ahead) {
  return impl_->inbox->Submit(ClockRequest{ahead});
}

Ticket Mount::ResetAlignment() {
  return impl_->inbox->Submit(ResetAlignmentRequest{});
}

Ticket Mount::SetMeridian(const MeridianSettings& settings) {
  return impl_->inbox->Submit(MeridianRequest{settings});
}

Pulse PulseTowards(PulseDirection direction, std::chrono::microseconds length) {
  switch (direction) {
    case PulseDirection::kNorth:
      return {{}, length};
    case PulseDirection::kSouth:
      return {{}, -length};
    case PulseDirection::kEast:
      return {-length, {}};
    case PulseDirection::kWest:
      return {length, {}};
  }
  return {};
}

}  // namespace velquin
