// SPDX-License-Identifier: MIT
// The switch of the device log: a setting of the host in the user's registry.
#pragma once

#include <memory>

#include "core/log/logger.h"

namespace logging::orlin {

/// @return true when "DeviceLogWrite" is "yes", "true", "on" or "1", in any case.
bool IsDeviceLogOn();

/// Opens velquin.log if the switch is on.
/// @return the logger, or null if the switch is off or the file cannot be opened. The driver does
///         not need the logger.
std::shared_ptr<Logger> OpenDeviceLog();

}  // namespace logging::orlin
