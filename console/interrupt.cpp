// SPDX-License-Identifier: MIT
// The console's control events.
#include "console/interrupt.h"

#include <windows.h>

#include <atomic>

#include "console/failure.h"
#include "console/journal_folder.h"
#include "console/stop_attempts.h"

namespace velquinctl {
namespace {

// The process is ended as soon as the handler of a closing window returns, or after 5 seconds.
constexpr DWORD kClosingMs = 4800;

// Shared by the program's thread and the system's handler thread: two events, which need no lock,
// and a count. The events live as long as the process, because a handler may still wait on one.
HANDLE pressed = nullptr;
HANDLE inOrder = nullptr;
std::atomic<int> timesPressed = 0;
std::atomic<bool> mountMayMove = false;

/// The last words of a program whose own thread is busy in the driver.
void WriteLastLine() {
  std::string line = "velquinctl: ended at once, without waiting for the driver";
  if (mountMayMove) line += std::string("; ") + kMayStillMove;
  line += "\r\n";
  DWORD written = 0;
  WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(line.size()), &written,
            nullptr);
}

BOOL WINAPI OnControlEvent(DWORD event) {
  if (timesPressed.fetch_add(1) > 0 && (event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT)) {
    // The second time means now, even while the driver is busy.
    WriteLastLine();
    if (const wchar_t* folder = JournalFolderInUse()) RemoveFolderAtOnce(folder);
    TerminateProcess(GetCurrentProcess(), static_cast<UINT>(ExitCode::kInterrupted));
  }
  SetEvent(pressed);
  if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT) WaitForSingleObject(inOrder, kClosingMs);
  return TRUE;
}

}  // namespace

Interrupt::Interrupt() {
  pressed = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  inOrder = CreateEventW(nullptr, TRUE, FALSE, nullptr);
  // A parent that ignores Ctrl-C hands that on; the mount must be stoppable all the same.
  SetConsoleCtrlHandler(nullptr, FALSE);
  SetConsoleCtrlHandler(OnControlEvent, TRUE);
}

Interrupt::~Interrupt() {
  SetEvent(inOrder);
}

void Interrupt::SetMountMayMove(bool may) {
  mountMayMove = may;
}

void Interrupt::SleepMs(int durationMs) const {
  if (WaitForSingleObject(pressed, static_cast<DWORD>(durationMs)) == WAIT_OBJECT_0)
    throw Failure(ExitCode::kInterrupted, "interrupted");
}

}  // namespace velquinctl
