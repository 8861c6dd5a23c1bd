// SPDX-License-Identifier: MIT
// The hand controller: a window of the driver, which lives as long as this program handles its
// messages.
#include <windows.h>

#include "console/commands.h"
#include "console/failure.h"

namespace velquinctl {
namespace {

constexpr UINT kLookMs = 50;

// The timer below has no other way to its caller. Used by the program's one thread.
const Interrupt* watchedInterrupt = nullptr;

BOOL CALLBACK FindDialog(HWND window, LPARAM result) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  if (std::wstring(name) != L"#32770" || !IsWindowVisible(window)) return TRUE;
  *reinterpret_cast<HWND*>(result) = window;
  return FALSE;
}

/// @return the topmost dialog that this thread shows, or null.
HWND ShownDialog() {
  HWND found = nullptr;
  EnumThreadWindows(GetCurrentThreadId(), FindDialog, reinterpret_cast<LPARAM>(&found));
  return found;
}

bool IsInterrupted(const Interrupt& interrupt) {
  try {
    interrupt.Check();
    return false;
  } catch (const Failure&) {
    return true;
  }
}

/// Runs also while a question of the driver has a message loop of its own: closes what is open.
void CALLBACK OnLook(HWND, UINT, UINT_PTR, DWORD) {
  if (!IsInterrupted(*watchedInterrupt)) return;
  HWND dialog = ShownDialog();
  if (dialog != nullptr) PostMessageW(dialog, WM_COMMAND, IDCANCEL, 0);
}

/// Handles messages until the window is hidden or gone.
void RunWindow(HWND window, const Interrupt& interrupt) {
  watchedInterrupt = &interrupt;
  const UINT_PTR timer = SetTimer(nullptr, 0, kLookMs, OnLook);
  MSG message;
  while (IsWindow(window) && IsWindowVisible(window) && GetMessageW(&message, nullptr, 0, 0) > 0) {
    TranslateMessage(&message);
    DispatchMessageW(&message);
  }
  KillTimer(nullptr, timer);
}

}  // namespace

void PerformDialog(const CommandContext& context, const DialogAction& action) {
  const Session& session = context.Connect();
  if (action.target) {
    const double radec[2] = {action.target->raDegrees, action.target->decDegrees};
    session.Exports().SetPos(nullptr, radec);
  }
  session.Exports().Dialog(nullptr, 1);
  HWND window = ShownDialog();
  if (window == nullptr)
    throw Failure(ExitCode::kMountFailed, "the hand controller cannot be shown on this display");
  // Somebody sits in front of it: the driver's questions are his.
  context.messages.SetAnswering(false);
  RunWindow(window, context.interrupt);
  context.messages.SetAnswering(!context.request.options.showMessages);
  session.Exports().Dialog(nullptr, 0);
  context.interrupt.Check();
  context.output.Done("hand controller closed", JsonObject());
}

}  // namespace velquinctl
