/* SPDX-License-Identifier: MIT */
/* A host in C. The public header comes first, so that it has to bring all that it needs. */
#include "include/telescope_api.h"

#include "tests/library/dll/header_alone.h"

#include <windows.h>

_Static_assert(sizeof(SiteTime) == 40, "the record of the clock");
_Static_assert(offsetof(SiteTime, month) == 4 && offsetof(SiteTime, day) == 8 &&
                   offsetof(SiteTime, hour) == 12 && offsetof(SiteTime, minute) == 16 &&
                   offsetof(SiteTime, second) == 24 && offsetof(SiteTime, zone) == 32,
               "the fields of the clock");
_Static_assert(sizeof(SiteLocation) == 24, "the record of the site");
_Static_assert(offsetof(SiteLocation, longitude) == 8 && offsetof(SiteLocation, third) == 16,
               "the fields of the site");

_Static_assert(TELESCOPE_NORTH == 1 && TELESCOPE_SOUTH == 2 && TELESCOPE_EAST == 3 &&
                   TELESCOPE_WEST == 4,
               "the numbers of the directions");

int RunSessionInC11(FindFunction find, const char* address, double* radec) {
  union {
    void* any;
    TelescopeStartFn start;
    TelescopeGetPosFn getPos;
    TelescopeEndFn end;
  } function;
  int i;
  int valid = 0;
  function.any = find("TelescopeStart");
  if (function.start(NULL, address, NULL, 0) != 1) return 0;
  function.any = find("TelescopeGetPos");
  for (i = 0; i < 1000 && !valid; ++i) {
    valid = function.getPos(NULL, radec);
    if (!valid) Sleep(10);
  }
  function.any = find("TelescopeEnd");
  return function.end(NULL) && valid;
}
