// SPDX-License-Identifier: MIT
// The built velquin.dll as a host sees it: loaded by name, every export with its type.
#pragma once

#include <string>

#include "api/telescope_api.h"
#include "api/velquin_util.h"

class Driver {
  void* module_ = nullptr;  // first: the exports below are found in it

 public:
  /// Loads the library from the folder of this program; a missing export ends the test.
  Driver();
  ~Driver() { Unload(); }
  Driver(const Driver&) = delete;
  Driver& operator=(const Driver&) = delete;

  void Unload();
  /// @return whether any part of this process still holds the library.
  static bool IsLoaded();
  /// @return full path of the library's file.
  std::wstring Path() const;

#define DRIVER_EXPORT(name) Telescope##name##Fn name = Find<Telescope##name##Fn>("Telescope" #name);
  DRIVER_EXPORT(AlignReset)
  DRIVER_EXPORT(BaseSetting)
  DRIVER_EXPORT(Check)
  DRIVER_EXPORT(Dialog)
  DRIVER_EXPORT(End)
  DRIVER_EXPORT(GetEastWest)
  DRIVER_EXPORT(GetParking)
  DRIVER_EXPORT(GetPos)
  DRIVER_EXPORT(GetSlewSpeedMax)
  DRIVER_EXPORT(GetStatus)
  DRIVER_EXPORT(Home)
  DRIVER_EXPORT(Look)
  DRIVER_EXPORT(Park)
  DRIVER_EXPORT(SetEastWest)
  DRIVER_EXPORT(SetGuideSpeed)
  DRIVER_EXPORT(SetIni)
  DRIVER_EXPORT(SetLogPath)
  DRIVER_EXPORT(SetLogPrefix)
  DRIVER_EXPORT(SetName)
  DRIVER_EXPORT(SetPos)
  DRIVER_EXPORT(SetVendor)
  DRIVER_EXPORT(Slew)
  DRIVER_EXPORT(SlewPulseDuration)
  DRIVER_EXPORT(Start)
  DRIVER_EXPORT(Stop)
  DRIVER_EXPORT(Sync)
  DRIVER_EXPORT(UnPark)
#undef DRIVER_EXPORT

  decltype(&::CalcJd) CalcJd = Find<decltype(&::CalcJd)>("CalcJd");
  decltype(&::GetMjd) GetMjd = Find<decltype(&::GetMjd)>("GetMjd");
  decltype(&::JdToDate) JdToDate = Find<decltype(&::JdToDate)>("JdToDate");
  decltype(&::HourTo60) HourTo60 = Find<decltype(&::HourTo60)>("HourTo60");
  decltype(&::degmal) Degmal = Find<decltype(&::degmal)>("degmal");
  decltype(&::degmal2) Degmal2 = Find<decltype(&::degmal2)>("degmal2");

 private:
  template <typename Function>
  Function Find(const char* name) {
    return reinterpret_cast<Function>(FindExport(name));
  }
  void* FindExport(const char* name);
};
