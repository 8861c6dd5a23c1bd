// SPDX-License-Identifier: MIT
#include "core/protocol/mount_status.h"

#include <algorithm>
#include <array>

#include "core/util/number_text.h"
#include "core/util/text_span.h"

namespace {

// Positions of the fields that the driver reads; the others are the controller's own affair.
enum StatusField : size_t {
  kControllerMjd = 0,
  kState = 1,
  kAxisAngle = 5,
  kPark1 = 6,
  kPark2 = 7,
  kRaHours = 8,
  kDec = 9,
  kMode = 10,
  kFieldCount,
};

constexpr int32_t kStateParked = 3;

// Whether the text before the first "=" is the status key, in any case and with any space around
// it.
bool IsStatusKey(const CString& line, int length) {
  static constexpr char kKey[] = "$mtsta";
  TextSpan found = Trimmed({line.GetString(), line.GetString() + length});
  found.last = std::find(found.first, found.last, '\0');
  const TextSpan key = {kKey, kKey + sizeof kKey - 1};
  return std::equal(found.first, found.last, key.first, key.last,
                    [](char a, char b) { return (a >= 'A' && a <= 'Z' ? a - 'A' + 'a' : a) == b; });
}

// The fields between the first and the second "=", found in place: a status is read ten times a
// second, and needs no string of its own for each number. The line must outlive this.
class StatusFields {
 public:
  // @param keyEnd where the first "=" stands; negative when there is none
  StatusFields(const CString& line, int keyEnd) {
    if (keyEnd < 0) return;
    const int second = line.Find("=", keyEnd + 1);
    const int end = second < 0 ? line.GetLength() : second;
    for (int start = keyEnd + 1; start < end && count < kFieldCount;) {
      const int found = line.Find(",", start);
      const int fieldEnd = found < 0 || found > end ? end : found;
      spans[count++] = {line.GetString() + start, line.GetString() + fieldEnd};
      start = fieldEnd + 1;
    }
  }
  double Double(StatusField field) const {
    return field < count ? TextToDouble(spans[field]) : 0.0;
  }
  int32_t Int(StatusField field) const { return field < count ? TextToInt(spans[field]) : 0; }

 private:
  std::array<TextSpan, kFieldCount> spans;
  size_t count = 0;
};

}  // namespace

// The modes in which the mount observes are 3 to 10 and 12 to 14.
bool MountStatus::IsReady() const {
  return state != kStateParked && mode >= 3 && mode <= 14 && mode != 11;
}

bool DecodeStatus(const CString& line, MountStatus& status) {
  const int keyEnd = line.Find("=");
  if (!IsStatusKey(line, keyEnd < 0 ? line.GetLength() : keyEnd)) return false;
  const StatusFields fields(line, keyEnd);
  status.controllerMjd = fields.Double(kControllerMjd);
  status.state = fields.Int(kState);
  status.axisAngleDegrees = fields.Double(kAxisAngle);
  status.park1 = fields.Double(kPark1);
  status.park2 = fields.Double(kPark2);
  status.raDegrees = fields.Double(kRaHours) / 24.0 * 360.0;
  status.decDegrees = fields.Double(kDec);
  status.mode = fields.Int(kMode);
  return true;
}
