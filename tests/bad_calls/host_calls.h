// SPDX-License-Identifier: MIT
// All 27 functions as a list, each with harmless arguments and with what it may answer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/driver_library.h"

struct HostCall {
  std::string name;  ///< without "Telescope"
  std::function<int32_t(const DriverLibrary&)> call;
  std::vector<int32_t> idle;       ///< what it may answer while no session runs
  std::vector<int32_t> inSession;  ///< what it may answer while one runs
};

/// @param address of a controller that answers; must outlive the list
/// @return the calls in alphabetical order. A call of Dialog opens the hand controller.
std::vector<HostCall> AllHostCalls(const std::string& address);
