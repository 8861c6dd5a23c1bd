// SPDX-License-Identifier: MIT
// The records of a link as texts, for comparing.
#pragma once

#include <string>
#include <vector>

#include "net/time_out_error.h"

/// @return "COMMAND : REASON" of every record, oldest first.
inline std::vector<std::string> RecordTexts(const TimeOutErrorList& errors) {
  std::vector<std::string> texts;
  for (ptrdiff_t index = 0; index < errors.GetSize(); ++index) {
    const TimeOutErrorW& error = errors[index];
    texts.push_back(std::string(error.strCommand) + " : " + std::string(error.strError));
  }
  return texts;
}
