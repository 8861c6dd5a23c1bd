// SPDX-License-Identifier: MIT
// The shape of a reply line: a prefix of seven characters ("$", five letters, "="), then the value.
// Pure functions; any thread.
#pragma once

#include <cstdint>

#include "framework/base/cstring.h"
#include "include/telescope_api.h"

inline constexpr int kReplyPrefixLength = 7;

/// @return the text from the eighth character on.
inline CString ReplyValue(const CString& reply) {
  return reply.Mid(kReplyPrefixLength);
}

/// @return true when the reply begins with the prefix, in any case of its letters.
inline bool HasReplyPrefix(const CString& reply, const char* prefix) {
  return reply.Left(kReplyPrefixLength).CompareNoCase(prefix) == 0;
}

/// @return true when a target was refused because it is below the horizon.
inline bool IsBelowHorizon(const CString& reply) {
  return ReplyValue(reply).CompareNoCase("BELOWHORIZON") == 0;
}

/// What the controller says about its site.
struct SiteReply {
  double latitudeDegrees = 0.0;
  double longitudeDegrees = 0.0;
  int32_t zone = 0;  ///< hours east of universal time
};

/// What the controller says about its model; the driver only keeps it.
struct ModelReply {
  int32_t a = 0;
  double b = 0.0;
  double c = 0.0;
};

/// Each reads a reply whose prefix was looked at already.
/// @return false, and nothing is written, unless it has exactly the number of fields.
bool DecodeSite(const CString& reply, SiteReply& site);
/// @param model receives the three numbers as they were sent
bool DecodeModel(const CString& reply, ModelReply& model);
/// @param time receives universal time in whole seconds, zone 0
bool DecodeUtc(const CString& reply, SiteTime& time);
