// SPDX-License-Identifier: MIT
// The command lines of the language, without line end: one place that formats them, for whoever
// talks to a controller. Only the link's own question whether somebody answers
// (CUdpLink::CheckUnit) stands elsewhere: net/ knows nothing of this folder. Pure functions; any
// thread.
#pragma once

#include <cstdint>

#include "framework/base/cstring.h"
#include "include/telescope_api.h"

namespace command_text {

inline constexpr const char* kVersionQuery = "$SYVER?";
inline constexpr const char* kModelQuery = "$MTMDL?";
inline constexpr const char* kStatusQuery = "$MTSTA?";
inline constexpr const char* kSiteQuery = "$SYLOC?";
inline constexpr const char* kUtcQuery = "$SYUTM?";
inline constexpr const char* kStop = "$MTSTP=1";
inline constexpr const char* kResetAlignment = "$ALINI=0";
inline constexpr const char* kInitialise = "$MTINI=1";

/// What the two values of a target mean.
enum TargetMode : int32_t {
  kHome = 1,        ///< axis readings, degrees; the mount rests there
  kPark = 2,        ///< the park coordinates of the status as received; the mount parks there
  kEquatorial = 3,  ///< right ascension in hours, declination in degrees
};

/// @param degrees of right ascension @return the same angle in hours; 360 degrees are 24
double DegreesToHours(double degrees);

/// Sends the mount to a place. @param name of the object; the comma before an empty one stays
CString Target(int32_t mode, double value1, double value2, const CString& name);
/// Sends the mount to its home position.
CString Home();
/// Tells the mount where it points. Parameters as for Target.
CString Align(int32_t mode, double value1, double value2, const CString& name);
/// Moves for a time. @param raRate, decRate the controller's unit; both 0 end a motion
CString Move(double seconds, double raRate, double decRate);
/// Sets the guide speeds. @param rateA, rateB first and second value, as the controller understands
/// them
CString GuideSpeed(double rateA, double rateB);
/// Sets what the mount does about the meridian, in degrees past it. @param stopPoint where tracking
/// stops, 0 leaves that to the mechanics @param gotoValue how far a goto stays on its side of the
/// pier
CString Meridian(double stopPoint, double gotoValue);
/// Sets a number that the controller alone knows the meaning of.
CString GtsValue(int32_t value);
/// @param zone hours east of universal time
CString Site(double latitudeDegrees, double longitudeDegrees, int32_t zone);
/// Sets the clock. @param time local time; its second is sent with one decimal
CString LocalTime(const SiteTime& time);

}  // namespace command_text
