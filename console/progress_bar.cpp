// SPDX-License-Identifier: MIT
// Draws the bar in ASCII, so that every terminal can.
#include "console/progress_bar.h"

#include <algorithm>
#include <cstdio>

namespace velquinctl {

std::string ProgressBar(double fraction, int width) {
  // Written so that NaN counts as nothing done.
  const double done = fraction > 0.0 ? std::min(fraction, 1.0) : 0.0;
  const int filled = static_cast<int>(done * width);
  std::string bar(static_cast<size_t>(filled), '=');
  if (filled < width) bar += filled > 0 ? '>' : ' ';
  bar.resize(static_cast<size_t>(width), ' ');
  char percent[8];
  std::snprintf(percent, sizeof percent, "%3d%%", static_cast<int>(done * 100.0));
  return '[' + bar + "] " + percent;
}

}  // namespace velquinctl
