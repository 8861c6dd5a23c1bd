// SPDX-License-Identifier: MIT
#include "core/net/time_out_journal.h"

#include "framework/base/exceptions.h"
#include "framework/base/stdio_file.h"
#include "include/velquin_util.h"
#include "platform/clock.h"

void WriteTimeOutJournal(const TimeOutErrorList& errors, const char* folder, const char* prefix) {
  if (errors.IsEmpty()) return;
  CString text;
  for (ptrdiff_t index = 0; index < errors.GetSize(); ++index) {
    text += TimeOutJournalLine(errors[index]);
  }
  std::tm localTime = {};
  if (!platform::LocalTime(std::time(nullptr), localTime)) AtlThrow(kInvalidArgument);
  CStdioFile file;
  const CString path = TimeOutJournalPath(folder, prefix, localTime);
  const UINT flags = CStdioFile::modeCreate | CStdioFile::modeWrite | CStdioFile::typeText;
  if (!file.Open(path, flags)) return;
  file.WriteString(text);
  file.Close();
}

CString TimeOutJournalPath(const char* folder, const char* prefix, const std::tm& localTime) {
  char stamp[128];
  if (std::strftime(stamp, sizeof stamp, "%Y%m%d_%H%M%S", &localTime) == 0) stamp[0] = '\0';
  CString path;
  path.Format("%s%s_%s_%s.txt", folder, prefix, "timeouterr_korvelwireless", stamp);
  return path;
}

CString TimeOutJournalLine(const TimeOutErrorW& error) {
  HourMinSec time;
  HourTo60(error.nClock / 1000.0 / 3600.0, &time);
  CString line;
  line.Format("%02d:%02d:%02d %s : %s\n", time.nHour, time.nMin, static_cast<int>(time.dSec),
              error.strCommand.GetString(), error.strError.GetString());
  return line;
}
