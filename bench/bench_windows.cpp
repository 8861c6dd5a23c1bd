// SPDX-License-Identifier: MIT
// How long a user waits for the hand controller: from the call that opens it to the moment at which
// it and all its controls are painted. Fails when the median is above the limit.
#include <windows.h>

#include <cstdio>
#include <vector>

#include "bench/stopwatch.h"
#include "tests/support/driver_library.h"
#include "tests/support/fault_count.h"

namespace {

constexpr double kLimitMs = 50.0;
constexpr int kRounds = 100;
constexpr int kNorthButton = 3010;

BOOL CALLBACK FindController(HWND window, LPARAM result) {
  if (GetDlgItem(window, kNorthButton) == nullptr) return TRUE;
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

BOOL CALLBACK CountUnpainted(HWND window, LPARAM count) {
  *reinterpret_cast<int*>(count) += GetUpdateRect(window, nullptr, FALSE) ? 1 : 0;
  return TRUE;
}

bool IsPainted(HWND window) {
  int unpainted = 0;
  CountUnpainted(window, reinterpret_cast<LPARAM>(&unpainted));
  EnumChildWindows(window, &CountUnpainted, reinterpret_cast<LPARAM>(&unpainted));
  return unpainted == 0;
}

// Opens the window and handles messages as a host does until it is painted.
bool OpenAndPaint(const DriverLibrary& library) {
  library.Dialog(nullptr, 1);
  HWND window = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), &FindController, reinterpret_cast<LPARAM>(&window));
  if (window == nullptr || !IsWindowVisible(window)) return false;
  MSG message;
  while (!IsPainted(window)) {
    if (GetMessageW(&message, nullptr, 0, 0) <= 0) return false;
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  return true;
}

}  // namespace

int main() {
  EndAtFaults(98);
  const DriverLibrary library;
  std::vector<double> ms;
  for (int round = 0; round < kRounds; ++round) {
    bool painted = false;
    ms.push_back(NanosecondsPerCall(1, [&] { painted = OpenAndPaint(library); }) / 1e6);
    library.Dialog(nullptr, 0);
    if (!painted) {
      std::printf("the hand controller cannot be shown\n");
      return 1;
    }
  }
  const double median = Median(ms);
  std::printf("%-28s %10.2f ms   first %.2f ms   limit %.0f ms   ratio %.3f\n",
              "hand controller, painted", median, ms.front(), kLimitMs, median / kLimitMs);
  return median < kLimitMs ? 0 : 1;
}
