// SPDX-License-Identifier: MIT
// The device log's switch, a setting of the host in the user's registry.
#pragma once

#include <memory>

#include "core/log/logger.h"

namespace logging::orlin {

/// @return true when "DeviceLogWrite" is "yes", "true", "on" or "1", in any case.
bool IsDeviceLogOn();

/// Opens velquin.log when the switch is on.
/// @return the logger, or null when the switch is off or the file cannot be opened; the driver
/// works
///         the same without it.
std::shared_ptr<Logger> OpenDeviceLog();

}  // namespace logging::orlin
