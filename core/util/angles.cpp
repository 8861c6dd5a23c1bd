// SPDX-License-Identifier: MIT
#include "include/velquin_util.h"

#include <algorithm>
#include <cmath>

#include "core/util/truncate.h"

void HourTo60(double hours, HourMinSec* result) {
  const int32_t wholeHours = TruncateToInt32(std::floor(hours));
  const int32_t minutes = TruncateToInt32(std::floor((hours - wholeHours) * 60.0));
  const double seconds = (hours - (minutes / 60.0 + wholeHours)) * 60.0 * 60.0;
  *result = {wholeHours, minutes, seconds};
}

double degmal(double degrees) {
  const double turns = degrees / 360.0;
  double folded = (turns - std::floor(turns)) * 360.0;
  if (folded < 0.0) folded += 360.0;
  if (folded >= 360.0) folded -= 360.0;
  return folded;
}

double degmal2(double degrees) {
  double folded = degmal(degrees);
  if (folded > 180.0) folded -= 360.0;
  return std::max(-90.0, std::min(90.0, folded));
}
