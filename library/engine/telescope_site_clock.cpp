// SPDX-License-Identifier: MIT
// Sends site and clock to the controller, and reads them back for the detail window.
#include <cmath>
#include <ctime>

#include "core/util/number_text.h"
#include "core/util/truncate.h"
#include "framework/base/wait_cursor.h"
#include "include/velquin_util.h"
#include "library/engine/telescope.h"
#include "platform/debug_output.h"
#include "platform/ini_file.h"

int CTelescope::BaseSetting(const SiteTime* time, const SiteLocation* location) {
  const CSingleLock guard(lock);
  siteTime = *time;
  siteLocation = *location;
  siteTimeStamp = std::time(nullptr);
  Enqueue(kCommandSiteAndClock);
  return 1;
}

int CTelescope::AlignReset() {
  return EnqueueAlone(kCommandAlignReset);
}

int CTelescope::SetEastWest(int32_t side) {
  const CSingleLock guard(lock);
  eastWest = side;
  return 1;
}

int CTelescope::GetEastWest() {
  int32_t side = 0;
  device.GetPierSide(&side);
  SetEastWest(side);
  return side;
}

void CTelescope::ApplyMeridianOverrides() {
  const double stopPoint = ReadIniNumber("_OverrideMeridianStopPoint", "0.0");
  const double gotoValue = ReadIniNumber("_OverrideMeridianGoto", "3.0");
  CString reply;
  device.SetMeridian(stopPoint, gotoValue, reply);
}

double CTelescope::ReadIniNumber(const char* key, const char* fallback) {
  char text[128];
  platform::ReadIniText(Copy(&CTelescope::iniFile), Copy(&CTelescope::iniSection), key, fallback,
                        text, sizeof text);
  return TextToDouble(text);
}

void CTelescope::SendSiteAndClock() {
  OnPoll();
  const bool clocksDiffer = ClocksDiffer();
  SendSite();
  SendClock();
  if (clocksDiffer) {
    CString reply;
    device.InitMount(reply);
  }
  ReadSiteAndClock();
}

bool CTelescope::ClocksDiffer() {
  constexpr double kOneMinuteInDays = 0.0006944444444444445;
  double controllerMjd = 0.0;
  device.GetControllerMjd(&controllerMjd);
  Lock();
  const SiteTime hostTime = siteTime;
  Unlock();
  const double hostMjd = GetMjd(CVQCtrlW::DateTimeToJd(hostTime));
  return !(std::fabs(hostMjd - controllerMjd) < kOneMinuteInDays);
}

void CTelescope::SendSite() {
  Lock();
  const double site[2] = {siteLocation.latitude, siteLocation.longitude};
  const int32_t zone = TruncateToInt32(siteTime.zone);
  Unlock();
  CString reply;
  if (device.SetLocation(site, zone, reply) == 0) {
    platform::DebugOutput("err send location\n");
    return;
  }
  const CSingleLock guard(lock);
  if (operating) Enqueue(kCommandUnPark);
}

void CTelescope::SendClock() {
  Lock();
  const SiteTime hostTime = siteTime;
  Unlock();
  CString reply;
  if (device.SetLocalTime(hostTime, reply) == 0) platform::DebugOutput("err send date\n");
}

void CTelescope::ReadSiteAndClock() {
  const CWaitCursor busyPointer;
  double site[2] = {};
  int32_t zone = 0;
  SiteTime utc = {};
  CString reply;
  if (device.GetLocation(site, &zone, reply) == 0) return;
  if (device.GetUtcTime(utc, reply) == 0) return;
  const CSingleLock guard(lock);
  dateText.Format("%d/%d/%d", utc.year, utc.month, utc.day);
  timeText.Format("%d:%d:%d", utc.hour, utc.minute, TruncateToInt32(utc.second));
  zoneText.Format("%d", zone);
  blankText.Empty();
  siteTextA.Format("%f", site[1]);
  siteTextB.Format("%f", site[0]);
}
