// SPDX-License-Identifier: MIT
#include "platform/debug_output.h"

#include <windows.h>

namespace platform {

void DebugOutput(const char* text) {
  OutputDebugStringA(text);
}

}  // namespace platform
