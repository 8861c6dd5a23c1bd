// SPDX-License-Identifier: MIT
// What this process holds of the system, counted anew at every call. Any thread.
#pragma once

#include <cstdint>

/// Counted without the usual calls (GetProcessHandleCount and the private bytes), which always
/// answer 0 under Wine.
struct ProcessFigures {
  int threads = 0;
  int handles = 0;
  int sockets = 0;            ///< those of the handles that are sockets
  int64_t workingSetKiB = 0;  ///< pages in memory
  int64_t pageFileKiB = 0;    ///< pages that are this process's own
};

/// @return KiB of memory that is this process's own, whether it has been touched or not. Slow: it
/// walks through the whole address space.
int64_t CommittedKiB();

/// Throws std::runtime_error when the system gives no answer.
ProcessFigures ReadProcessFigures();
