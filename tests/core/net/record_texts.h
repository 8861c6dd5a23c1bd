// SPDX-License-Identifier: MIT
// The records of a link, for comparing.
#pragma once

#include <string>
#include <vector>

#include "core/net/udp_link.h"

/// @return a copy of every record, oldest first.
inline std::vector<TimeOutErrorW> RecordsOf(CUdpLink& link) {
  TimeOutErrorList list;
  link.CopyTimeOutErrors(list);
  std::vector<TimeOutErrorW> records;
  for (ptrdiff_t index = 0; index < list.GetSize(); ++index) records.push_back(list[index]);
  return records;
}

/// @return "COMMAND : REASON" of every record, oldest first.
inline std::vector<std::string> RecordTexts(CUdpLink& link) {
  std::vector<std::string> texts;
  for (const TimeOutErrorW& error : RecordsOf(link)) {
    texts.push_back(std::string(error.strCommand) + " : " + std::string(error.strError));
  }
  return texts;
}
