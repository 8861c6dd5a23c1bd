// SPDX-License-Identifier: MIT
// Snapshot: everything known about a mount at one moment. A plain value without pointers; the
// caller owns its copy, which never changes. Any thread.
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>

namespace velquin {

using MonotonicTime = std::chrono::steady_clock::time_point;

/// The axis of right ascension (polar axis), or the declination axis.
enum class Axis { kRa = 0, kDec = 1 };
inline constexpr size_t kAxisCount = 2;

/// @return the axis as an index into arrays of two.
constexpr size_t Index(Axis axis) {
  return static_cast<size_t>(axis);
}

enum class Connection {
  kDisconnected,  ///< no connection was requested, or the last attempt failed (see `failure`)
  kConnecting,
  kConnected,
  kLost,  ///< was connected; the controller is silent, and is queried again every 0.5 to 5 s
};

/// Why the last attempt to connect failed.
enum class ConnectFailure {
  kNone,
  kNameNotFound,    ///< the name does not resolve to an IPv4 address
  kNoAnswer,        ///< no answer arrived
  kWrongAnswer,     ///< answers arrived, but truncated, or with another key
  kNotAController,  ///< something answers that does not speak the controller's protocol
};

/// What the mount is doing. A goto, home, park or unpark shows from the controller's
/// acknowledgement until its ticket ends, regardless of a single status. Before the acknowledgement
/// only its ticket shows that it is in progress.
enum class Motion {
  kUnknown,  ///< no status yet
  kAtRest,   ///< not tracking
  kTracking,
  kSlewing,
  kHoming,
  kParking,
  kParked,
  kMovingByHand,
};

/// The side of the pier on which the tube is.
enum class PierSide {
  kUnknown,
  kWest,  ///< the tube is west of the pier and looks east: axis angle up to 90 degrees
  kEast,  ///< the tube is east of the pier and looks west
};

enum class LinkQuality {
  kUnknown,  ///< not connected
  kGood,     ///< none of the last 20 exchanges failed
  kShaky,    ///< some of them failed
  kLost,     ///< three status queries in a row had no usable answer
};

/// Figures of the connection. Totals count since Connect.
struct LinkHealth {
  LinkQuality quality = LinkQuality::kUnknown;
  uint64_t exchanges = 0;
  uint64_t losses = 0;             ///< exchanges without a usable answer
  double roundTripMedianMs = 0.0;  ///< of the last 256 answered exchanges; 0 before the first
  double roundTripP99Ms = 0.0;
};

struct SkyPoint {
  double raHours = 0.0;     ///< 0 up to, not including, 24; of the equinox of date
  double decDegrees = 0.0;  ///< -90 to 90
};

/// An observing site as the controller stores it.
struct Site {
  double latitudeDegrees = 0.0;   ///< -90 to 90, north positive
  double longitudeDegrees = 0.0;  ///< -180 to 180, east positive; sent with three decimals
  int zoneHours = 0;              ///< -12 to 14: local time minus universal time, whole hours
};

/// Guide speeds, multiples of the sidereal rate, 0 to 1.
struct GuideRates {
  double ra = 1.0;
  double dec = 1.0;
};

/// How the controller treats the meridian, degrees past it.
struct MeridianSettings {
  double stopDegrees = 0.0;  ///< where tracking stops; 0 leaves that to the mechanical limits
  double gotoDegrees = 3.0;  ///< how far a goto stays on its side of the pier
};

struct Snapshot {
  uint64_t sequence = 0;  ///< grows by one with each published snapshot
  Connection connection = Connection::kDisconnected;
  ConnectFailure failure = ConnectFailure::kNone;
  LinkHealth link;

  // From the last status; while the link is lost they do not change and grow old.
  bool hasReading = false;
  MonotonicTime readAt;  ///< when the last status arrived; meaningless without a reading
  SkyPoint position;
  PierSide pierSide = PierSide::kUnknown;
  double axisAngleDegrees = 0.0;  ///< of the declination circle
  double controllerMjd = 0.0;     ///< the controller's clock at readAt: Modified Julian Date, UTC
  bool ready = false;             ///< the controller reports that it is ready to observe

  Motion motion = Motion::kUnknown;
  std::array<bool, kAxisCount> pulsing = {};  ///< a guide pulse runs, by axis
  std::array<bool, kAxisCount> moving = {};   ///< a hand move runs, by axis

  bool hasTarget = false;
  SkyPoint target;  ///< of the last goto or sync
  bool hasSite = false;
  Site site;  ///< as the controller reported it
  bool hasGuideRates = false;
  GuideRates guideRates;  ///< as set by the caller; the controller does not report them
  bool hasMeridian = false;
  MeridianSettings meridian;  ///< as set by the caller

  /// @return the time since the last status; meaningless without a reading.
  MonotonicTime::duration Age() const { return std::chrono::steady_clock::now() - readAt; }
  bool IsPulsing(Axis axis) const { return pulsing[Index(axis)]; }
};

}  // namespace velquin
