// SPDX-License-Identifier: MIT
// The simulated German equatorial mount and its controller's clock: pure model, no sockets, no
// threads, no clock of its own; its owner tells it how much time has passed. Not locked.
#pragma once

#include <optional>

#include "simulator/celestial.h"
#include "simulator/slew_axis.h"

namespace simulator {

/// Where the mount stands.
struct Site {
  double longitudeDegrees;  ///< -180 to +180, east positive
  double latitudeDegrees;   ///< -90 to +90, north positive
  int zoneHours;            ///< hours that local time is ahead of universal time
};

/// The two axis readings.
struct AxisPair {
  /// The polar axis: hour angle of the counterweight bar's plane, 270 = counterweight down.
  /// Tracking increases it. Up to 360 the tube has not yet passed the meridian on its side of the
  /// pier.
  double polarDegrees;
  /// The declination axis: distance of the tube from the visible pole. Positive: the tube is on the
  /// west side of the pier and looks east; negative: on the east side, looking west.
  double fromPoleDegrees;
};

/// What the mount is doing; the numbers are those of the status line.
enum class MountState { kStopped = 0, kTracking = 1, kSlewing = 2, kParked = 3 };

/// How a request to go somewhere was taken.
enum class SlewAnswer { kAccepted, kBelowHorizon, kOutOfReach };

/// What a mount is built and started with.
struct MountSettings {
  Site site = {139.767, 35.681, 9};
  double utcSeconds = 0.0;  ///< the controller's clock: seconds since Modified Julian Date 0
  SlewLimits limits = {4.0, 4.0};
};

/// How long a hand move was carried out.
struct MoveRun {
  double askedSeconds;
  double appliedSeconds;
};

class MountModel {
 public:
  /// The mount stands at its home position, not tracking.
  explicit MountModel(const MountSettings& settings);

  /// Lets time pass, for the axes and for the clock. @param seconds 0 or more
  void Advance(double seconds);

  /// Starts a slew to a place in the sky, which the mount then tracks. It keeps to its side of the
  /// pier when that takes it at most the meridian goto value past the meridian. Ends parking.
  SlewAnswer GotoSky(const SkyPosition& target);
  /// Starts a slew to axis readings. @param then what the mount does there: kStopped or kParked
  SlewAnswer GotoAxes(const AxisPair& target, MountState then);
  /// Ends a hand move; brakes a slew and tracks from the place where that ends.
  void Stop();

  /// Moves by hand or guide pulse, in addition to tracking, and ends by itself. Takes the place of
  /// a move that still runs. With both rates 0 it is a Stop.
  /// @param raRate, decRate multiples of the sidereal rate; positive means increasing right
  ///        ascension (east) and increasing declination (north)
  /// @return false (nothing done) while the mount slews or is parked.
  bool Move(double seconds, double raRate, double decRate);
  /// @return how the last move went that has ended since this was last asked.
  std::optional<MoveRun> TakeEndedMove();

  /// Takes the present pointing for the given position, by shifting the axes' zero points.
  /// @return false (nothing done) while the mount slews or is parked.
  bool Align(const SkyPosition& truth);
  /// Forgets every Align.
  void ResetAlignment();

  /// @param stopDegrees how far past the meridian tracking stops; 0 leaves it to the mechanics
  /// @param gotoDegrees how far past the meridian a goto stays on its side of the pier
  /// @return false (nothing done) unless both are within 0 to the mechanical overrun of 30 degrees.
  bool SetMeridian(double stopDegrees, double gotoDegrees);
  double MeridianStopDegrees() const { return meridianStop_; }
  double MeridianGotoDegrees() const { return meridianGoto_; }

  /// Clock and site take effect at once; the axes stay where they are.
  void SetUtcSeconds(double utcSeconds);
  void SetSite(const Site& site) { site_ = site; }
  /// Begins anew after a change of the clock: the alignment, made under the old one, is forgotten.
  void Reinitialise();

  MountState State() const { return state_; }
  /// @return true after tracking ended by itself at the meridian stop or the mechanical limit.
  bool StoppedAtLimit() const { return stoppedAtLimit_; }
  bool IsMovedByHand() const { return move_.has_value(); }
  SkyPosition Position() const;
  AxisPair Axes() const { return {polar_.degrees, fromPole_.degrees}; }
  /// @return the declination axis counted from the equator through the visible pole: 90 or less
  ///         with the tube on the west side of the pier, more on the east side.
  double DeclinationCircleDegrees() const { return 90.0 - fromPole_.degrees; }
  double AltitudeOf(const SkyPosition& target) const;
  double UtcSeconds() const { return clockSetSeconds_ + sinceClockSet_; }
  const Site& CurrentSite() const { return site_; }
  const SlewLimits& Limits() const { return limits_; }

  static constexpr AxisPair kHome = {270.0, 0.0};   ///< counterweight down, tube at the pole
  static constexpr AxisPair kPark = {270.0, 30.0};  ///< counterweight down, tube turned east

 private:
  struct Slew {
    AxisPair target;
    double drift;  // degrees per second: the sky's turning for a place in the sky, else 0
    MountState then;
  };
  struct HandMove {
    double askedSeconds;
    double leftSeconds;
    double polarRate;     // degrees per second of the polar axis
    double fromPoleRate;  // degrees per second of the declination axis
  };

  double HourAngleOf(double raHours) const;
  double PoleSign() const { return site_.latitudeDegrees < 0.0 ? -1.0 : 1.0; }
  double TrackingEndDegrees() const;
  AxisPair ChooseAxes(const SkyPosition& target, double pastMeridianDegrees) const;
  void BeginSlew(const Slew& slew);
  void EndMove();
  void StepSlew(double seconds);
  void StepFreely(double seconds);
  void StepMove(double seconds);

  Site site_;
  SlewLimits limits_;
  double clockSetSeconds_;  // apart from the time since, so that tiny steps are not rounded away
  double sinceClockSet_ = 0.0;

  SlewAxis polar_ = {kHome.polarDegrees};
  SlewAxis fromPole_ = {kHome.fromPoleDegrees};
  AxisPair alignment_ = {0.0, 0.0};  // what Align has added to the axes so far
  MountState state_ = MountState::kStopped;
  bool stoppedAtLimit_ = false;
  std::optional<Slew> slew_;  // present exactly while state_ is kSlewing
  std::optional<HandMove> move_;
  std::optional<MoveRun> endedMove_;
  double meridianStop_ = 0.0;
  double meridianGoto_ = 3.0;
};

}  // namespace simulator
