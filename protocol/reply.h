// SPDX-License-Identifier: MIT
// The shape of a reply line: a prefix of seven characters ("$", five letters, "="), then the value.
#pragma once

#include "framework/base/cstring.h"

inline constexpr int kReplyPrefixLength = 7;

/// @return the text from the eighth character on.
inline CString ReplyValue(const CString& reply) {
  return reply.Mid(kReplyPrefixLength);
}
