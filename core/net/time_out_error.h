// SPDX-License-Identifier: MIT
// TimeOutErrorW: one failed or slow exchange, which is one line of the time-out journal. Plain
// data.
#pragma once

#include <cstdint>

#include "framework/base/array.h"
#include "framework/base/cstring.h"

struct TimeOutErrorW {
  CString strCommand;  ///< the command as the caller passed it, without the line end
  int32_t nClock = 0;  ///< when the exchange began, milliseconds since the host process started
  CString strError;    ///< the reason
};

using TimeOutErrorList = CArray<TimeOutErrorW, TimeOutErrorW&>;
