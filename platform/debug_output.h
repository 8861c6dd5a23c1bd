// SPDX-License-Identifier: MIT
// Operating-system seam: the debugger's output window (standard error elsewhere). Any thread.
#pragma once

namespace platform {

void DebugOutput(const char* text);

}  // namespace platform
