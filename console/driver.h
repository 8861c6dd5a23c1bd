// SPDX-License-Identifier: MIT
// velquin.dll as a host sees it: loaded by name, every export under its own name and type.
#pragma once

#include <string>

#include "include/telescope_api.h"

namespace velquinctl {

/// Loads the library at construction and releases it at destruction. A library that is loaded anew
/// knows nothing of an earlier mount. Any thread, as the exports themselves.
class Driver {
 public:
  /// @param libraryPath UTF-8; empty for velquin.dll in the folder of this program
  /// @throws Failure with kLibraryUnusable when it is missing, cannot be loaded or lacks an export
  explicit Driver(const std::string& libraryPath);
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;
  ~Driver();

  TelescopeAlignResetFn AlignReset = nullptr;
  TelescopeBaseSettingFn BaseSetting = nullptr;
  TelescopeCheckFn Check = nullptr;
  TelescopeDialogFn Dialog = nullptr;
  TelescopeEndFn End = nullptr;
  TelescopeGetEastWestFn GetEastWest = nullptr;
  TelescopeGetParkingFn GetParking = nullptr;
  TelescopeGetPosFn GetPos = nullptr;
  TelescopeGetSlewSpeedMaxFn GetSlewSpeedMax = nullptr;
  TelescopeGetStatusFn GetStatus = nullptr;
  TelescopeHomeFn Home = nullptr;
  TelescopeLookFn Look = nullptr;
  TelescopeParkFn Park = nullptr;
  TelescopeSetEastWestFn SetEastWest = nullptr;
  TelescopeSetGuideSpeedFn SetGuideSpeed = nullptr;
  TelescopeSetIniFn SetIni = nullptr;
  TelescopeSetLogPathFn SetLogPath = nullptr;
  TelescopeSetLogPrefixFn SetLogPrefix = nullptr;
  TelescopeSetNameFn SetName = nullptr;
  TelescopeSetPosFn SetPos = nullptr;
  TelescopeSetVendorFn SetVendor = nullptr;
  TelescopeSlewFn Slew = nullptr;
  TelescopeSlewPulseDurationFn SlewPulseDuration = nullptr;
  TelescopeStartFn Start = nullptr;
  TelescopeStopFn Stop = nullptr;
  TelescopeSyncFn Sync = nullptr;
  TelescopeUnParkFn UnPark = nullptr;

 private:
  void FindExports(const std::string& path);

  void* module_ = nullptr;
};

}  // namespace velquinctl
