// SPDX-License-Identifier: MIT
// Operating-system seam: the settings that decide the language for the user. Any thread.
#pragma once

#include <cstdint>

namespace platform {

/// @return the number of the code page in which narrow texts are shown: 932 is Japanese, 65001
///         UTF-8. The native build's texts are UTF-8.
uint32_t NarrowCodePage();

/// @return whether the user has chosen Japanese for the system's windows. The native build has no
///         windows and returns true, so that its texts are always the same.
bool IsUserJapanese();

}  // namespace platform
