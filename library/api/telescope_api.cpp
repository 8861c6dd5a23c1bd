// SPDX-License-Identifier: MIT
// The 27 exports: each makes the library's module state current and forwards to the engine.
#include "include/telescope_api.h"

#include "framework/base/module_state.h"
#include "library/api/module_frame.h"
#include "library/engine/telescope.h"

namespace {

// Runs one call of a host in the library's module state. No exception may reach the host, which may
// be written in another language; the only possible one is a lack of memory.
template <typename Body>
int32_t Call(Body body) noexcept {
  AFX_MANAGE_STATE(AfxGetStaticModuleState());
  try {
    return body(TheTelescope());
  } catch (...) {
    return 0;
  }
}

HWND Handle(TelescopeWindow window) {
  return static_cast<HWND>(window);
}

}  // namespace

int32_t TelescopeSetName(TelescopeWindow, const char* name) {
  return Call([&](CTelescope& engine) { return engine.SetName(name); });
}

int32_t TelescopeSetVendor(TelescopeWindow, const char* vendor) {
  return Call([&](CTelescope& engine) { return engine.SetVendor(vendor); });
}

int32_t TelescopeSetIni(TelescopeWindow, const char* iniFile, const char* section) {
  return Call([&](CTelescope& engine) { return engine.SetIni(iniFile, section); });
}

int32_t TelescopeSetLogPath(TelescopeWindow, const char* path) {
  return Call([&](CTelescope& engine) { return engine.SetLogPath(path); });
}

int32_t TelescopeSetLogPrefix(TelescopeWindow, const char* prefix) {
  return Call([&](CTelescope& engine) { return engine.SetLogPrefix(prefix); });
}

int32_t TelescopeCheck(TelescopeWindow window, const char* address, void*, char* version,
                       size_t versionSize, char* extra, size_t) {
  return Call([&](CTelescope& engine) {
    return engine.Check(Handle(window), address, version, versionSize, extra);
  });
}

int32_t TelescopeStart(TelescopeWindow window, const char* address, void*, int32_t) {
  return Call([&](CTelescope& engine) { return engine.Start(Handle(window), address); });
}

int32_t TelescopeEnd(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.End(); });
}

int32_t TelescopeBaseSetting(TelescopeWindow, const SiteTime* time, const SiteLocation* location) {
  return Call([&](CTelescope& engine) {
    if (time == nullptr || location == nullptr) return 1;
    return engine.BaseSetting(time, location);
  });
}

int32_t TelescopeGetPos(TelescopeWindow, double* radec) {
  return Call([&](CTelescope& engine) { return radec == nullptr ? 0 : engine.GetPos(radec); });
}

int32_t TelescopeGetParking(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.GetParking() == 0 ? 1 : 0; });
}

int32_t TelescopeGetEastWest(TelescopeWindow) {
  return Call([&](CTelescope& engine) {
    const int side = engine.GetEastWest();
    return side == -1 ? 0 : side == 1 ? 1 : -1;
  });
}

int32_t TelescopeGetStatus(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.GetStatus(); });
}

int32_t TelescopeGetSlewSpeedMax(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.GetSlewSpeedMax(); });
}

int32_t TelescopeSetPos(TelescopeWindow, const double* radec) {
  return Call([&](CTelescope& engine) { return radec == nullptr ? 1 : engine.SetPos(radec); });
}

int32_t TelescopeLook(TelescopeWindow, const double* radec) {
  return Call([&](CTelescope& engine) { return engine.Look(radec); });
}

int32_t TelescopeSync(TelescopeWindow, const double* radec) {
  return Call([&](CTelescope& engine) { return engine.Sync(radec); });
}

int32_t TelescopeStop(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.Stop(); });
}

int32_t TelescopeSlew(TelescopeWindow, int32_t direction, int32_t push, int32_t speed) {
  return Call([&](CTelescope& engine) { return engine.Slew(direction, push, speed); });
}

int32_t TelescopeSlewPulseDuration(TelescopeWindow, int32_t northMs, int32_t southMs,
                                   int32_t eastMs, int32_t westMs, double rateA, double rateB) {
  return Call([&](CTelescope& engine) {
    return engine.SlewPulseDuration(northMs, southMs, eastMs, westMs, rateA, rateB);
  });
}

int32_t TelescopeSetGuideSpeed(TelescopeWindow, double rateA, double rateB) {
  return Call([&](CTelescope& engine) { return engine.SetGuideSpeed(rateA, rateB); });
}

int32_t TelescopeHome(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.Home(); });
}

int32_t TelescopePark(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.Park(); });
}

int32_t TelescopeUnPark(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.UnPark(); });
}

int32_t TelescopeAlignReset(TelescopeWindow) {
  return Call([&](CTelescope& engine) { return engine.AlignReset(); });
}

int32_t TelescopeSetEastWest(TelescopeWindow, int32_t side) {
  return Call([&](CTelescope& engine) { return engine.SetEastWest(side); });
}

int32_t TelescopeDialog(TelescopeWindow, int32_t show) {
  return Call([&](CTelescope& engine) { return engine.ShowController(show != 0); });
}
