// SPDX-License-Identifier: MIT
// The bar of a progress line. Pure, any thread.
#pragma once

#include <string>

namespace velquinctl {

/// @param fraction 0 to 1; outside of it the nearest end counts
/// @param width characters between the brackets, at least 1
/// @return for example [=====>    ]  58%; full only when the fraction is 1.
std::string ProgressBar(double fraction, int width);

}  // namespace velquinctl
