// SPDX-License-Identifier: MIT
#include "protocol/mount_status.h"

#include "util/string_sep.h"

namespace {

// Positions of the fields that the driver reads; the others are the controller's own affair.
enum StatusField : int32_t {
  kControllerMjd = 0,
  kState = 1,
  kAxisAngle = 5,
  kPark1 = 6,
  kPark2 = 7,
  kRaHours = 8,
  kDec = 9,
  kMode = 10,
};

constexpr int32_t kStateParked = 3;

}  // namespace

// The modes in which the mount observes are 3 to 10 and 12 to 14.
bool MountStatus::IsReady() const {
  return state != kStateParked && mode >= 3 && mode <= 14 && mode != 11;
}

bool DecodeStatus(const CString& line, MountStatus& status) {
  CStringSep parts;
  parts.Set(line, "=", 0);
  if (parts.Same(0, "$MTSTA") == 0) return false;
  CStringSep fields;
  const CString values = parts.GetParam(1);
  fields.Set(values, ",", 0);
  // A text that is not empty has a field; the split leaves none when there is no memory. Taken for
  // missing ones they would be a position and park coordinates of 0, where a park would go.
  if (fields.GetCount() == 0 && !values.IsEmpty()) return false;
  status.controllerMjd = fields.atof(kControllerMjd, 0.0);
  status.state = fields.atoi(kState, 0);
  status.axisAngleDegrees = fields.atof(kAxisAngle, 0.0);
  status.park1 = fields.atof(kPark1, 0.0);
  status.park2 = fields.atof(kPark2, 0.0);
  status.raDegrees = fields.atof(kRaHours, 0.0) / 24.0 * 360.0;
  status.decDegrees = fields.atof(kDec, 0.0);
  status.mode = fields.atoi(kMode, 0);
  return true;
}
