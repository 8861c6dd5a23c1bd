// SPDX-License-Identifier: MIT
#include "platform/debug_output.h"

#include <cstdio>

namespace platform {

void DebugOutput(const char* text) {
  std::fputs(text, stderr);
}

}  // namespace platform
