// SPDX-License-Identifier: MIT
// The commands that hand something over: site, align-reset, ini.
#include <windows.h>

#include <cstdio>

#include "console/commands.h"
#include "console/files.h"
#include "console/machine_clock.h"
#include "console/mount_poll.h"
#include "console/text_encoding.h"
#include "console/whole_hour_zone.h"

namespace velquinctl {
namespace {

// The hand-over is answered by nothing that could be waited for. It takes ten exchanges or so, and
// ends with the mount resuming its tracking, which must come before the end of the session.
constexpr int kHandOverMs = 1000;

std::string SiteText(const SiteTime& time, const SiteLocation& location) {
  char text[160];
  std::snprintf(text, sizeof text,
                "site and clock sent: latitude %.4f\u00b0, longitude %.4f\u00b0, local time "
                "%04d-%02d-%02d %02d:%02d:%02d, zone %+g h",
                location.latitude, location.longitude, time.year, time.month, time.day, time.hour,
                time.minute, static_cast<int>(time.second), time.zone);
  return text;
}

std::string LocalTimeText(const SiteTime& time) {
  char text[64];
  std::snprintf(text, sizeof text, "%04d-%02d-%02dT%02d:%02d:%04.1f", time.year, time.month,
                time.day, time.hour, time.minute, time.second);
  return text;
}

/// @return what stands under a key, as the driver will read it, or nothing when the key is missing.
std::string IniValue(const IniAction& action, const wchar_t* key) {
  wchar_t value[128] = {};
  GetPrivateProfileStringW(WideFromUtf8(action.section).c_str(), key, L"", value, 128,
                           WideFromUtf8(FullPath(action.file)).c_str());
  return Utf8FromWide(value);
}

}  // namespace

void PerformSite(const CommandContext& context, const SiteAction& action) {
  const Session& session = context.Connect();
  const double zone = action.zoneHours ? *action.zoneHours : MachineZoneHours();
  SiteTime local = action.localTime ? *action.localTime : MachineTime(zone);
  local.zone = zone;
  const SiteTime time = InWholeHourZone(local);
  session.Exports().BaseSetting(nullptr, &time, &action.location);
  context.interrupt.SleepMs(kHandOverMs);
  context.output.Done(SiteText(time, action.location),
                      JsonObject()
                          .Add("latitudeDegrees", action.location.latitude)
                          .Add("longitudeDegrees", action.location.longitude)
                          .Add("zoneHours", time.zone)
                          .Add("localTime", LocalTimeText(time))
                          .Append(StateObject(session.Read())));
}

void PerformAlignReset(const CommandContext& context) {
  context.Connect().Exports().AlignReset(nullptr);
  context.output.Done("alignment reset sent", JsonObject());
}

void PerformIni(const CommandContext& context, const IniAction& action) {
  SessionSettings settings = SettingsOf(context.request);
  settings.iniFile = FullPath(action.file);
  settings.iniSection = action.section;
  const Session& session = context.sessions.Open(settings);
  const MountState state = session.WaitForPosition(context.interrupt, context.TimeoutSeconds(10.0));
  const std::string stopPoint = IniValue(action, L"_OverrideMeridianStopPoint");
  const std::string gotoValue = IniValue(action, L"_OverrideMeridianGoto");
  context.output.Done("connected with [" + action.section + "] of " + settings.iniFile +
                          ": meridian stop point " +
                          (stopPoint.empty() ? "0.0 (default)" : stopPoint) + ", meridian goto " +
                          (gotoValue.empty() ? "3.0 (default)" : gotoValue),
                      JsonObject()
                          .Add("iniFile", settings.iniFile)
                          .Add("iniSection", action.section)
                          .Add("meridianStopPoint", stopPoint.empty() ? "0.0" : stopPoint)
                          .Add("meridianGoto", gotoValue.empty() ? "3.0" : gotoValue)
                          .Append(StateObject(state)));
}

}  // namespace velquinctl
