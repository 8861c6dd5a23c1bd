/* SPDX-License-Identifier: MIT */
/* A host written in C includes these headers; what it sees is handed to records_test.cpp. */
#include "tests/core/util/headers_in_c.h"

#include <stddef.h>

#include "include/telescope_api.h"
#include "include/velquin_util.h"

int SizeOfHourMinSecInC(void) {
  return (int)sizeof(HourMinSec);
}
int SizeOfSiteTimeInC(void) {
  return (int)sizeof(SiteTime);
}
int SizeOfSiteLocationInC(void) {
  return (int)sizeof(SiteLocation);
}

double ModernEpochFromC(void) {
  int32_t year = 0;
  int32_t month = 0;
  double day = 0.0;
  JdToDate(GetMjd(CalcJd(2000.0, 1.0, 1.5)) + 2400000.5, &year, &month, &day);
  return year * 10000.0 + month * 100.0 + day;
}

double FoldedSecondsFromC(void) {
  HourMinSec split;
  HourTo60(degmal(390.0) + degmal2(-45.0) + 15.5, &split);
  return split.nHour * 3600.0 + split.nMin * 60.0 + split.dSec;
}
