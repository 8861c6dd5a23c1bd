// SPDX-License-Identifier: MIT
// velquin.dll as a host sees it: loaded by its name, every function found by its name.
#pragma once

#include <windows.h>

#include <string>

#include "api/telescope_api.h"

/// The library, loaded as long as the object lives or until Unload. Throws std::runtime_error when
/// the library or a function of it is missing.
class DriverLibrary {
 public:
  DriverLibrary();
  ~DriverLibrary();
  DriverLibrary(const DriverLibrary&) = delete;
  DriverLibrary& operator=(const DriverLibrary&) = delete;

  void Unload();
  /// @return whether any part of the process still holds the library.
  static bool IsLoaded();

  /// @return one of the other functions.
  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(FindAny(name)));
  }

 private:
  FARPROC FindAny(const char* name) const;

  HMODULE module;  // first: what follows is looked up in it

 public:
#define VELQUIN_FUNCTION(name) \
  const Telescope##name##Fn name = Find<Telescope##name##Fn>("Telescope" #name)
  VELQUIN_FUNCTION(AlignReset);
  VELQUIN_FUNCTION(BaseSetting);
  VELQUIN_FUNCTION(Check);
  VELQUIN_FUNCTION(Dialog);
  VELQUIN_FUNCTION(End);
  VELQUIN_FUNCTION(GetEastWest);
  VELQUIN_FUNCTION(GetParking);
  VELQUIN_FUNCTION(GetPos);
  VELQUIN_FUNCTION(GetSlewSpeedMax);
  VELQUIN_FUNCTION(GetStatus);
  VELQUIN_FUNCTION(Home);
  VELQUIN_FUNCTION(Look);
  VELQUIN_FUNCTION(Park);
  VELQUIN_FUNCTION(SetEastWest);
  VELQUIN_FUNCTION(SetGuideSpeed);
  VELQUIN_FUNCTION(SetIni);
  VELQUIN_FUNCTION(SetLogPath);
  VELQUIN_FUNCTION(SetLogPrefix);
  VELQUIN_FUNCTION(SetName);
  VELQUIN_FUNCTION(SetPos);
  VELQUIN_FUNCTION(SetVendor);
  VELQUIN_FUNCTION(Slew);
  VELQUIN_FUNCTION(SlewPulseDuration);
  VELQUIN_FUNCTION(Start);
  VELQUIN_FUNCTION(Stop);
  VELQUIN_FUNCTION(Sync);
  VELQUIN_FUNCTION(UnPark);
#undef VELQUIN_FUNCTION
};
