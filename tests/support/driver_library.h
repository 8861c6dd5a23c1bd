// SPDX-License-Identifier: MIT
// velquin.dll as a host sees it: loaded and asked for every function by name. Windows only.
#pragma once

#include <windows.h>

#include "include/telescope_api.h"
#include "include/velquin_util.h"

/// The library, loaded as long as the object lives or until Unload, and all functions that it
/// exports, under their own names without "Telescope". Every object loads it once more: the library
/// goes when the last object has let go of it. The functions may be called from any thread, the
/// object itself is made, unloaded and destroyed by one at a time.
class DriverLibrary {
 public:
  /// Loads the library that lies beside the program.
  /// @throws std::runtime_error when the library or a function of it is missing
  DriverLibrary();
  ~DriverLibrary();
  DriverLibrary(const DriverLibrary&) = delete;
  DriverLibrary& operator=(const DriverLibrary&) = delete;

  /// Lets go of the library before the object's end; no function may be called from now on. A
  /// second call does nothing.
  void Unload();
  /// @return whether any part of the process still holds the library, whoever loaded it.
  static bool IsLoaded();

  /// @return the function that is exported under exactly this name.
  /// @throws std::runtime_error when there is none, or the library has been unloaded
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

#define VELQUIN_FUNCTION(name) const name##Fn name = Find<name##Fn>(#name)
  VELQUIN_FUNCTION(CalcJd);
  VELQUIN_FUNCTION(GetMjd);
  VELQUIN_FUNCTION(HourTo60);
  VELQUIN_FUNCTION(JdToDate);
  VELQUIN_FUNCTION(degmal);
  VELQUIN_FUNCTION(degmal2);
#undef VELQUIN_FUNCTION
};
