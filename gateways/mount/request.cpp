// SPDX-License-Identifier: MIT
#include "gateways/mount/request.h"

#include <cmath>

namespace velquin {

namespace {

// Also false for NaN.
bool IsWithin(double value, double least, double most) {
  return value >= least && value <= most;
}

bool IsValid(const SkyPoint& point) {
  return IsWithin(point.raHours, 0.0, 24.0) && point.raHours < 24.0 &&
         IsWithin(point.decDegrees, -90.0, 90.0);
}

struct Validity {
  template <typename Any>
  bool operator()(const Any&) const {
    return true;
  }
  bool operator()(const GotoRequest& request) const { return IsValid(request.target); }
  bool operator()(const SyncRequest& request) const { return IsValid(request.position); }
  bool operator()(const MoveRequest& request) const {
    const double rate = std::fabs(request.rate);
    // Sent with six decimals; a rate that rounds to 1 would be a share of the guide speed.
    return rate == 0.0 || IsWithin(rate, 1.000001, kMaxMoveRate);
  }
  bool operator()(const GuideRequest& request) const {
    constexpr std::chrono::hours kLongest{1};
    const Pulse& pulse = request.pulse;
    return pulse.ra <= kLongest && pulse.ra >= -kLongest && pulse.dec <= kLongest &&
           pulse.dec >= -kLongest;
  }
  bool operator()(const GuideRatesRequest& request) const {
    return IsWithin(request.rates.ra, 0.0, 1.0) && IsWithin(request.rates.dec, 0.0, 1.0);
  }
  bool operator()(const SiteRequest& request) const {
    return IsWithin(request.site.latitudeDegrees, -90.0, 90.0) &&
           IsWithin(request.site.longitudeDegrees, -180.0, 180.0) &&
           IsWithin(request.site.zoneHours, -12.0, 14.0);
  }
  bool operator()(const ClockRequest& request) const {
    constexpr std::chrono::hours kFarthest{24 * 366 * 50};
    return request.ahead <= kFarthest && request.ahead >= -kFarthest;
  }
  bool operator()(const MeridianRequest& request) const {
    return IsWithin(request.settings.stopDegrees, 0.0, 90.0) &&
           IsWithin(request.settings.gotoDegrees, 0.0, 90.0);
  }
};

}  // namespace

bool IsJourney(const RequestBody& body) {
  return std::holds_alternative<GotoRequest>(body) || std::holds_alternative<HomeRequest>(body) ||
         std::holds_alternative<ParkRequest>(body) || std::holds_alternative<UnparkRequest>(body);
}

bool IsMotion(const RequestBody& body) {
  return IsJourney(body) || std::holds_alternative<SyncRequest>(body) ||
         std::holds_alternative<MoveRequest>(body) || std::holds_alternative<GuideRequest>(body);
}

bool IsValid(const RequestBody& body) {
  return std::visit(Validity{}, body);
}

}  // namespace velquin
