// SPDX-License-Identifier: MIT
// What callers ask of a mount, on its way to the worker. Plain data.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <variant>

#include "gateways/mount/mount.h"
#include "gateways/mount/ticket_state.h"

namespace velquin {

struct GotoRequest {
  SkyPoint target;
};
struct HomeRequest {};
struct ParkRequest {};
struct UnparkRequest {};
struct SyncRequest {
  SkyPoint position;
};
struct MoveRequest {
  Axis axis;
  double rate;
  MonotonicTime until;  ///< where a hold ends that is not renewed
};
struct GuideRequest {
  Pulse pulse;
  WhenBusy whenBusy;
};
struct GuideRatesRequest {
  GuideRates rates;
};
struct SiteRequest {
  Site site;
};
struct ClockRequest {
  std::chrono::nanoseconds ahead;
};
struct ResetAlignmentRequest {};
struct MeridianRequest {
  MeridianSettings settings;
};

using RequestBody = std::variant<GotoRequest, HomeRequest, ParkRequest, UnparkRequest, SyncRequest,
                                 MoveRequest, GuideRequest, GuideRatesRequest, SiteRequest,
                                 ClockRequest, ResetAlignmentRequest, MeridianRequest>;

struct Request {
  RequestBody body;
  std::shared_ptr<TicketState> ticket;
};

/// @return true for a request that sends the mount to a place, of which the last one counts.
bool IsJourney(const RequestBody& body);
/// @return true for a request that a stop cancels.
bool IsMotion(const RequestBody& body);
/// @return false when a value is out of its range, or not a number.
bool IsValid(const RequestBody& body);

/// What callers ask of the connection; the last one counts.
struct SessionOrder {
  bool connect;
  std::string address;
};

}  // namespace velquin
