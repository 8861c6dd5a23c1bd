/* SPDX-License-Identifier: MIT */
/* A host that links the import library instead of loading velquin.dll. Exit code 0: all is well. */
#include "include/telescope_api.h"

int main(void) {
  double radec[2] = {0.0, 0.0};
  if (TelescopeGetSlewSpeedMax(NULL) != 9) return 1;
  if (TelescopeGetPos(NULL, radec) != 0) return 2;
  return radec[0] == -1.0 && TelescopeEnd(NULL) == 1 ? 0 : 3;
}
