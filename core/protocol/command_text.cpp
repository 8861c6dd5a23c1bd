// SPDX-License-Identifier: MIT
#include "core/protocol/command_text.h"

namespace command_text {

namespace {

CString Place(const char* key, int32_t mode, double value1, double value2, const CString& name) {
  CString command;
  command.Format("%s=%d,%.6f,%.6f,%s", key, mode, value1, value2, name.GetString());
  return command;
}

CString Pair(const char* key, double first, double second) {
  CString command;
  command.Format("%s=%f,%f", key, first, second);
  return command;
}

}  // namespace

double DegreesToHours(double degrees) {
  return degrees / 360.0 * 24.0;
}

CString Target(int32_t mode, double value1, double value2, const CString& name) {
  return Place("$MTTGT", mode, value1, value2, name);
}

CString Home() {
  return Target(kHome, 270.0, 0.0, "Home");
}

CString Align(int32_t mode, double value1, double value2, const CString& name) {
  return Place("$ALIGN", mode, value1, value2, name);
}

CString Move(double seconds, double raRate, double decRate) {
  CString command;
  command.Format("$MTMV2=%f,%f,%f", seconds, raRate, decRate);
  return command;
}

CString GuideSpeed(double rateA, double rateB) {
  return Pair("$MTAGS", rateA, rateB);
}

CString Meridian(double stopPoint, double gotoValue) {
  return Pair("$MTCOM", stopPoint, gotoValue);
}

CString GtsValue(int32_t value) {
  CString command;
  command.Format("$MTGTS=%d", value);
  return command;
}

CString Site(double latitudeDegrees, double longitudeDegrees, int32_t zone) {
  CString command;
  command.Format("$SYLOC=%8.3f,%7.3f,%d", longitudeDegrees, latitudeDegrees, zone);
  return command;
}

CString LocalTime(const SiteTime& time) {
  CString command;
  command.Format("$SYLTM=%04d,%02d,%02d,%02d,%02d,%04.1f", time.year, time.month, time.day,
                 time.hour, time.minute, time.second);
  return command;
}

}  // namespace command_text
