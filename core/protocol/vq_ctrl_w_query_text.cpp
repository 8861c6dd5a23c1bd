// SPDX-License-Identifier: MIT
// Positions written as the text of a query ("ra=...&dec=...").
#include <cmath>

#include "core/protocol/vq_ctrl_w.h"
#include "core/util/truncate.h"

CString CVQCtrlW::FormatRaDecQuery(const double* target) const {
  const double raHours = target[0] / 15.0;
  const double hours = std::floor(raHours);
  const double minutes = (raHours - hours) * 60.0;
  const char* sign = target[1] < 0.0 ? "-" : "";
  const double degrees = std::floor(std::fabs(target[1]));
  const double arcMinutes = (std::fabs(target[1]) - degrees) * 60.0;
  CString text;
  if (fineQuery) {
    text.Format("ra=%02d+%04.3f&dec=%s%02d%+02.2f", TruncateToInt32(hours), minutes, sign,
                TruncateToInt32(degrees), arcMinutes);
  } else {
    text.Format("ra=%02d+%04.1f&dec=%s%02d%+02.0f", TruncateToInt32(hours), minutes, sign,
                TruncateToInt32(degrees), arcMinutes);
  }
  return text;
}

void CVQCtrlW::SplitQuery(const CString& text, StringList& list) {
  int start = 0;
  while (start <= text.GetLength()) {
    const int found = text.Find("&", start);
    const int end = found < 0 ? text.GetLength() : found;
    CString piece = text.Mid(start, end - start);
    list.Add(piece);
    start = end + 1;
  }
}

int CVQCtrlW::FindQueryValue(const StringList& list, const CString& key, CString& value) {
  const CString start = key + "=";
  for (ptrdiff_t index = 0; index < list.GetSize(); ++index) {
    const CString& entry = list[index];
    if (entry.Left(start.GetLength()).CompareNoCase(start) != 0) continue;
    value = entry.Mid(start.GetLength());
    return 1;
  }
  return 0;
}
