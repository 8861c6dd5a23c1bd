// SPDX-License-Identifier: MIT
// The commands that hand something over: site, align-reset, ini.
#include <windows.h>

#include <algorithm>
#include <cstdio>

#include "console/commands.h"
#include "console/failure.h"
#include "console/files.h"
#include "console/fresh_look.h"
#include "console/machine_clock.h"
#include "console/mount_poll.h"
#include "console/text_encoding.h"
#include "console/whole_hour_zone.h"

namespace velquinctl {
namespace {

constexpr double kSettingSeconds = 10.0;
// The hand-over takes up to eight exchanges and then queues another, the one that makes a ready
// mount resume its tracking; it must be queued before the end of the session is. How long exchanges
// take is known from the connecting, which is seven of them.
// A lost query before it, the driver's pause and a lost query of its own take 1.1 s.
constexpr double kShortestHandOverSeconds = 1.8;
constexpr double kLongestHandOverSeconds = 4.7;

int HandOverMs(const Session& session) {
  return static_cast<int>(1000.0 * std::clamp(0.5 + 2.0 * session.ConnectSeconds(),
                                              kShortestHandOverSeconds, kLongestHandOverSeconds));
}

std::string SiteText(const SiteTime& time, const SiteLocation& location) {
  char text[160];
  std::snprintf(
      text, sizeof text,
      "site and clock acknowledged: latitude %.4f\u00b0, longitude %.4f\u00b0, local time "
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
  context.interrupt.SleepMs(HandOverMs(session));
  const MountState state = session.Read();
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kSite, "all of site and clock",
                     context.Limit(kSettingSeconds));
  context.output.Done(SiteText(time, action.location) + kAcceptanceUntold,
                      JsonObject()
                          .Add("latitudeDegrees", action.location.latitude)
                          .Add("longitudeDegrees", action.location.longitude)
                          .Add("zoneHours", time.zone)
                          .Add("localTime", LocalTimeText(time))
                          .Append(StateObject(state)));
}

void PerformAlignReset(const CommandContext& context) {
  context.Connect().Exports().AlignReset(nullptr);
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kAlignReset, "the alignment reset",
                     context.Limit(kSettingSeconds));
  context.output.Done(std::string("alignment reset acknowledged") + kAcceptanceUntold,
                      JsonObject());
}

void PerformIni(const CommandContext& context, const IniAction& action) {
  SessionSettings settings = SettingsOf(context.request);
  settings.iniFile = FullPath(action.file);
  settings.iniSection = action.section;
  const Session& session = context.sessions.Open(settings);
  const TimeLimit limit = context.Limit(kSettingSeconds);
  const MountState state = session.WaitForPosition(context.interrupt, limit.LeftSeconds());
  const SessionOutcome outcome = context.sessions.End(EndProbe::kAsk);
  ExpectAcknowledged(context, outcome, MountCommand::kMeridian, "the meridian overrides", limit);
  const std::string stopPoint = IniValue(action, L"_OverrideMeridianStopPoint");
  const std::string gotoValue = IniValue(action, L"_OverrideMeridianGoto");
  context.output.Done("connected with [" + action.section + "] of " + settings.iniFile +
                          ": meridian stop point " +
                          (stopPoint.empty() ? "0.0 (default)" : stopPoint) + ", meridian goto " +
                          (gotoValue.empty() ? "3.0 (default)" : gotoValue) + kAcceptanceUntold,
                      JsonObject()
                          .Add("iniFile", settings.iniFile)
                          .Add("iniSection", action.section)
                          .Add("meridianStopPoint", stopPoint.empty() ? "0.0" : stopPoint)
                          .Add("meridianGoto", gotoValue.empty() ? "3.0" : gotoValue)
                          .Append(StateObject(state)));
}

}  // namespace velquinctl
