// SPDX-License-Identifier: MIT
// A clock reading as people write it. Pure, any thread.
#pragma once

#include <optional>
#include <string_view>

#include "include/telescope_api.h"

namespace velquinctl {

/// Reads YYYY-MM-DDTHH:MM[:SS[.s]], with a T or a blank between day and hour; the day must exist.
/// @return the reading with zone 0, or nothing when the text is none.
std::optional<SiteTime> ParseLocalTime(std::string_view text);

}  // namespace velquinctl
