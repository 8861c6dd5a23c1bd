// SPDX-License-Identifier: MIT
// The built library, loaded by name as a host does; the exports that the benchmarks call.
#pragma once

#include "api/telescope_api.h"

class DriverLibrary {
 public:
  /// Loads velquin.dll from the folder of this program; says so on standard output when it is
  /// missing.
  DriverLibrary();
  bool IsReady() const { return ready; }

  TelescopeStartFn start = nullptr;
  TelescopeEndFn end = nullptr;
  TelescopeGetPosFn getPos = nullptr;
  TelescopeSlewPulseDurationFn pulse = nullptr;

 private:
  bool ready = false;
};
