// SPDX-License-Identifier: MIT
// The callers' requests to a mount, on their way to the worker. Plain data.
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
  MonotonicTime until;  ///< when a hold ends without renewal
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

/// @return true for a request that sends the mount to a position; only the last such request
///         counts.
bool IsJourney(const RequestBody& body);
/// @return true for a request that a stop cancels.
bool IsMotion(const RequestBody& body);
/// @return false if a value is out of its range, or NaN.
bool IsValid(const RequestBody& body);

/// The callers' orders about the connection; the last one counts.
struct SessionOrder {
  bool connect;
  std::string address;
};

}  // namespace velquin
