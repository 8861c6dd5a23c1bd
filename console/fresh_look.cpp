// SPDX-License-Identifier: MIT
#include "console/fresh_look.h"

#include <memory>

#include "console/failure.h"
#include "console/motion_watch.h"
#include "console/mount_poll.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kPollMs = 50;
constexpr int kPauseMs = 100;
// Longer than it takes until a slow link has brought another reading.
constexpr double kMomentSeconds = 0.8;

/// Looks for something in one session after the other.
class Looker {
 public:
  /// @param makeStep empty when a single reading is enough
  Looker(const CommandContext& context, const TimeLimit& limit, LookStep single,
         const std::function<LookStep()>& makeStep)
      : context_(context), limit_(limit), acrossSessions_(std::move(single)), makeStep_(makeStep) {}

  FreshLook Look() {
    while (!look_.holds && !limit_.Over()) {
      try {
        look_.holds = LookOnce();
      } catch (const Failure& failure) {
        if (failure.Code() != ExitCode::kMountFailed) throw;
        context_.messages.Take();
        context_.messages.SetAnswering(true);
      }
      context_.sessions.Close();
      if (!look_.holds) context_.interrupt.SleepMs(kPauseMs);
    }
    context_.messages.SetAnswering(!context_.request.options.showMessages);
    return look_;
  }

 private:
  bool LookOnce() {
    SessionHolder& sessions = context_.sessions;
    const Session& session = sessions.Current() != nullptr
                                 ? *sessions.Current()
                                 : sessions.Open(SettingsOf(context_.request));
    look_.state = session.WaitForPosition(context_.interrupt, limit_.LeftSeconds());
    // The first reading of a session is never an old one, so a row of these needs no more proof.
    if (acrossSessions_(SteadySeconds() - begin_, *look_.state)) return true;
    return makeStep_ ? WatchSession(session, makeStep_()) : SeekReading(session);
  }

  /// Waits for a reading that the first one was not. @return whether it came
  bool SeekReading(const Session& session) {
    while (NextReading(session)) {
      if (acrossSessions_(SteadySeconds() - begin_, *look_.state)) return true;
    }
    return false;
  }

  /// Watches a row of readings. @return whether it showed what is looked for, and none was missing
  bool WatchSession(const Session& session, const LookStep& step) {
    const double begin = SteadySeconds();
    while (!step(SteadySeconds() - begin, *look_.state)) {
      if (!NextReading(session)) return false;
    }
    return context_.sessions.End(EndProbe::kAsk).ReadingsComplete();
  }

  bool NextReading(const Session& session) {
    if (limit_.Over()) return false;
    context_.interrupt.SleepMs(kPollMs);
    const MountState state = session.Read();
    if (state.valid) look_.state = state;
    return state.valid;
  }

  const CommandContext& context_;
  const TimeLimit limit_;
  const LookStep acrossSessions_;
  const std::function<LookStep()> makeStep_;
  const double begin_ = SteadySeconds();
  FreshLook look_;
};

}  // namespace

FreshLook LookAnew(const CommandContext& context, const TimeLimit& limit, const LookStep& step) {
  return Looker(context, limit, step, {}).Look();
}

FreshLook WatchAnew(const CommandContext& context, const TimeLimit& limit,
                    const std::function<LookStep()>& makeStep) {
  return Looker(context, limit, makeStep(), makeStep).Look();
}

MomentView WatchForAMoment(const CommandContext& context, const TimeLimit& limit) {
  MomentView view;
  const auto makeStep = [&]() -> LookStep {
    return [&, first = std::optional<SkyPosition>(), begin = 0.0](double seconds,
                                                                  const MountState& state) mutable {
      if (!first) {
        first = state.position;
        begin = seconds;
      }
      const double passed = seconds - begin;
      if (passed < kMomentSeconds) return false;
      view.motion = MotionBetween(*first, state.position, passed);
      view.degreesPerSecond = SpeedBetween(*first, state.position, passed);
      return true;
    };
  };
  view.look = WatchAnew(context, limit, makeStep);
  return view;
}

void ExpectAcknowledged(const CommandContext& context, const SessionOutcome& outcome,
                        MountCommand command, const std::string& what, const TimeLimit& limit) {
  if (outcome.Acknowledged(command)) return;
  const auto first = [](double, const MountState&) { return true; };
  const std::optional<MountState> now = LookAnew(context, limit, first).state;
  throw Failure(
      ExitCode::kMountFailed,
      (outcome.Evident()
           ? "the controller did not acknowledge " + what + ", though it may have obeyed; "
           : kNoEvidence + ("; it may have obeyed " + what + "; ")) +
          (now ? "the mount reports " + PositionText(now->position) + ", " + ReadyText(*now)
               : "it reports no position"));
}

LookStep RestStep(double restSeconds) {
  const auto motion = std::make_shared<MotionWatch>(restSeconds);
  return [motion](double seconds, const MountState& state) {
    motion->Add(seconds, state.position);
    return motion->AtRest();
  };
}

}  // namespace velquinctl
