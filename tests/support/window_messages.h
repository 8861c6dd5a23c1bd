// SPDX-License-Identifier: MIT
// The messages of the calling thread's windows, for a host without a loop of its own. Windows only.
#pragma once

#include <windows.h>

/// Handles those that are there now.
inline void HandleMessages() {
  MSG message;
  while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) DispatchMessageW(&message);
}
