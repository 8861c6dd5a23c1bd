// SPDX-License-Identifier: MIT
#include "include/velquin_util.h"

#include <cmath>

#include "core/util/truncate.h"

double CalcJd(double year, double month, double day) {
  if (month < 3.0) {
    month += 12.0;
    year -= 1.0;
  }
  double jd = std::floor((month - 2.0) * 30.59) + std::floor(year * 365.25) + day + 1721086.5;
  if (jd > 2299160.5) {
    jd += std::floor(year / 400.0) - std::floor(year / 100.0) + 2.0;
  }
  return jd;
}

double GetMjd(double jd) {
  return jd - 2400000.5;
}

void JdToDate(double jd, int32_t* year, int32_t* month, double* day) {
  const double z = std::floor(jd + 0.5);
  const double fraction = (jd + 0.5) - z;
  double a = z;
  if (z >= 2299160.5) {
    const double alpha = std::floor((z - 1867216.25) / 36524.25);
    a = z + alpha - std::floor(alpha * 0.25) + 1.0;
  }
  const double b = a + 1524.0;
  const double c = std::floor((b - 122.1) / 365.25);
  const double d = std::floor(c * 365.25);
  const double e = std::floor((b - d) / 30.6001);
  *day = b - d - std::floor(e * 30.6001) + fraction;
  *month = TruncateToInt32(std::floor(e - (e >= 13.5 ? 13.0 : 1.0) + 0.5));
  *year = TruncateToInt32(std::floor(c - (*month > 2 ? 4716.0 : 4715.0) + 0.5));
}
