// SPDX-License-Identifier: MIT
#include "simulator/mount_model.h"

#include <algorithm>
#include <cmath>

namespace simulator {

namespace {

constexpr double kSlewStepSeconds = 0.01;
// On either side of the pier the polar axis turns from 180 (lower meridian) to 360 (upper one), and
// the mechanics let it pass both by this much.
constexpr double kFirstDegrees = 180.0;
constexpr double kLastDegrees = 360.0;
constexpr double kOverrunDegrees = 30.0;
constexpr double kHorizonDegrees = -1e-9;  // a place on the horizon counts as up

/// Brings an angle into the turn around the counterweight-down position.
double PolarTurn(double degrees) {
  return WrapDegrees(degrees - 90.0) + 90.0;
}

bool IsWithin(double polarDegrees, double pastMeridianDegrees) {
  return polarDegrees >= kFirstDegrees - pastMeridianDegrees &&
         polarDegrees <= kLastDegrees + pastMeridianDegrees;
}

}  // namespace

MountModel::MountModel(const MountSettings& settings)
    : site_(settings.site), limits_(settings.limits), clockSetSeconds_(settings.utcSeconds) {}

void MountModel::Advance(double seconds) {
  double left = seconds;
  while (left > 0.0) {
    double step = left;
    if (slew_) step = std::min(step, kSlewStepSeconds);
    if (move_) step = std::min(step, move_->leftSeconds);
    sinceClockSet_ += step;
    left -= step;
    if (slew_) {
      StepSlew(step);
    } else {
      StepFreely(step);
    }
  }
}

void MountModel::StepSlew(double seconds) {
  // A slew into the sky is made in the sky's own frame: axis and target turn with it.
  polar_.degrees += slew_->drift * seconds;
  slew_->target.polarDegrees += slew_->drift * seconds;
  const bool polarThere = polar_.StepTowards(slew_->target.polarDegrees, seconds, limits_);
  const bool fromPoleThere = fromPole_.StepTowards(slew_->target.fromPoleDegrees, seconds, limits_);
  if (!polarThere || !fromPoleThere) return;
  state_ = slew_->then;
  slew_.reset();
}

void MountModel::StepFreely(double seconds) {
  const bool tracks = state_ == MountState::kTracking;
  const double polarRate =
      (tracks ? kSiderealDegreesPerSecond : 0.0) + (move_ ? move_->polarRate : 0.0);
  const double next = polar_.degrees + polarRate * seconds;
  if (tracks && next > TrackingEndDegrees()) {
    polar_.degrees = std::max(polar_.degrees, TrackingEndDegrees());
    state_ = MountState::kStopped;
    stoppedAtLimit_ = true;
  } else {
    // Forgetting an alignment may have left the axis outside; it must not go farther out.
    polar_.degrees = std::clamp(next, std::min(polar_.degrees, kFirstDegrees - kOverrunDegrees),
                                std::max(polar_.degrees, kLastDegrees + kOverrunDegrees));
  }
  if (move_) StepMove(seconds);
}

void MountModel::StepMove(double seconds) {
  // The poles end the travel on either side of the pier; only a slew changes the side.
  const bool looksEast = fromPole_.degrees >= 0.0;
  fromPole_.degrees = std::clamp(fromPole_.degrees + move_->fromPoleRate * seconds,
                                 looksEast ? 0.0 : -180.0, looksEast ? 180.0 : 0.0);
  move_->leftSeconds -= seconds;
  if (move_->leftSeconds <= 0.0) EndMove();
}

SlewAnswer MountModel::GotoSky(const SkyPosition& target) {
  if (AltitudeOf(target) < kHorizonDegrees) return SlewAnswer::kBelowHorizon;
  const double past = std::min(meridianGoto_, TrackingEndDegrees() - kLastDegrees);
  BeginSlew({ChooseAxes(target, past), kSiderealDegreesPerSecond, MountState::kTracking});
  return SlewAnswer::kAccepted;
}

SlewAnswer MountModel::GotoAxes(const AxisPair& target, MountState then) {
  const AxisPair reading = {PolarTurn(target.polarDegrees), target.fromPoleDegrees};
  if (!IsWithin(reading.polarDegrees, kOverrunDegrees)) return SlewAnswer::kOutOfReach;
  if (std::fabs(reading.fromPoleDegrees) > 180.0) return SlewAnswer::kOutOfReach;
  BeginSlew({reading, 0.0, then});
  return SlewAnswer::kAccepted;
}

void MountModel::BeginSlew(const Slew& slew) {
  EndMove();
  slew_ = slew;
  state_ = MountState::kSlewing;
  stoppedAtLimit_ = false;
}

void MountModel::Stop() {
  EndMove();
  if (!slew_) return;
  slew_ = Slew{{polar_.BrakingPoint(limits_), fromPole_.BrakingPoint(limits_)},
               kSiderealDegreesPerSecond,
               MountState::kTracking};
}

bool MountModel::Move(double seconds, double raRate, double decRate) {
  if (raRate == 0.0 && decRate == 0.0) {
    Stop();
    return true;
  }
  if (state_ == MountState::kSlewing || state_ == MountState::kParked) return false;
  EndMove();
  if (seconds <= 0.0) return true;
  const double sideSign = fromPole_.degrees >= 0.0 ? 1.0 : -1.0;
  move_ = HandMove{seconds, seconds, -raRate * kSiderealDegreesPerSecond,
                   -decRate * sideSign * PoleSign() * kSiderealDegreesPerSecond};
  return true;
}

void MountModel::EndMove() {
  if (!move_) return;
  const double left = std::max(move_->leftSeconds, 0.0);
  endedMove_ = MoveRun{move_->askedSeconds, move_->askedSeconds - left};
  move_.reset();
}

std::optional<MoveRun> MountModel::TakeEndedMove() {
  std::optional<MoveRun> ended;
  std::swap(ended, endedMove_);
  return ended;
}

bool MountModel::Align(const SkyPosition& truth) {
  if (state_ == MountState::kSlewing || state_ == MountState::kParked) return false;
  const AxisPair reading = ChooseAxes(truth, kOverrunDegrees);
  alignment_.polarDegrees += reading.polarDegrees - polar_.degrees;
  alignment_.fromPoleDegrees += reading.fromPoleDegrees - fromPole_.degrees;
  polar_.degrees = reading.polarDegrees;
  fromPole_.degrees = reading.fromPoleDegrees;
  return true;
}

void MountModel::ResetAlignment() {
  polar_.degrees -= alignment_.polarDegrees;
  fromPole_.degrees -= alignment_.fromPoleDegrees;
  // Slews between absurd alignments may have taken the axis more than half a turn from here.
  if (std::fabs(fromPole_.degrees) > 180.0) {
    fromPole_.degrees = WrapDegrees(fromPole_.degrees + 180.0) - 180.0;
  }
  alignment_ = {0.0, 0.0};
}

bool MountModel::SetMeridian(double stopDegrees, double gotoDegrees) {
  if (stopDegrees < 0.0 || stopDegrees > kOverrunDegrees) return false;
  if (gotoDegrees < 0.0 || gotoDegrees > kOverrunDegrees) return false;
  meridianStop_ = stopDegrees;
  meridianGoto_ = gotoDegrees;
  return true;
}

void MountModel::SetUtcSeconds(double utcSeconds) {
  clockSetSeconds_ = utcSeconds;
  sinceClockSet_ = 0.0;
}

void MountModel::Reinitialise() {
  EndMove();
  ResetAlignment();
}

SkyPosition MountModel::Position() const {
  const bool looksEast = fromPole_.degrees >= 0.0;
  const double hourAngle = polar_.degrees - (looksEast ? 360.0 : 180.0);
  const double sidereal = SiderealDegrees(UtcSeconds(), site_.longitudeDegrees);
  return {WrapDegrees(sidereal - hourAngle) / 15.0,
          PoleSign() * (90.0 - std::fabs(fromPole_.degrees))};
}

double MountModel::AltitudeOf(const SkyPosition& target) const {
  return AltitudeDegrees(site_.latitudeDegrees, HourAngleOf(target.raHours), target.decDegrees);
}

double MountModel::HourAngleOf(double raHours) const {
  return SiderealDegrees(UtcSeconds(), site_.longitudeDegrees) - raHours * 15.0;
}

double MountModel::TrackingEndDegrees() const {
  return kLastDegrees + (meridianStop_ > 0.0 ? meridianStop_ : kOverrunDegrees);
}

AxisPair MountModel::ChooseAxes(const SkyPosition& target, double pastMeridianDegrees) const {
  const double hourAngle = HourAngleOf(target.raHours);
  const double fromPole = 90.0 - PoleSign() * target.decDegrees;
  const AxisPair east = {PolarTurn(hourAngle + 360.0), fromPole};
  const AxisPair west = {PolarTurn(hourAngle + 180.0), -fromPole};
  if (fromPole_.degrees > 0.0 && IsWithin(east.polarDegrees, pastMeridianDegrees)) return east;
  if (fromPole_.degrees < 0.0 && IsWithin(west.polarDegrees, pastMeridianDegrees)) return west;
  return IsWithin(east.polarDegrees, 0.0) ? east : west;
}

}  // namespace simulator
