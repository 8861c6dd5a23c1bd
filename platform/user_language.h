// SPDX-License-Identifier: MIT
// The seam to what decides in which language a user can be spoken to. Any thread.
#pragma once

#include <cstdint>

namespace platform {

/// @return the number of the code page that narrow texts are shown through: 932 is Japanese, 65001
///         UTF-8. The native build's texts are UTF-8.
uint32_t NarrowCodePage();

/// @return whether the user has chosen Japanese as the language of the system's own windows. The
///         native build has no windows, and answers yes, so that its texts are always the same.
bool IsUserJapanese();

}  // namespace platform
