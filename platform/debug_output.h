// SPDX-License-Identifier: MIT
// The seam to the debugger's output window (standard error elsewhere). Any thread.
#pragma once

namespace platform {

void DebugOutput(const char* text);

}  // namespace platform
