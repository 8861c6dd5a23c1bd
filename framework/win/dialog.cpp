// SPDX-License-Identifier: MIT
#include "framework/win/dialog.h"

#include <algorithm>

#include "framework/win/instance.h"
#include "framework/win/modeless_keys.h"
#include "framework/win/module_calls.h"
#include "framework/win/window_closer.h"

namespace {

// The place is in the header of the template, which has two layouts.
bool IsUnplaced(UINT templateId) {
  const HINSTANCE module = AfxGetResourceHandle();
  const HRSRC found = ::FindResourceA(module, MAKEINTRESOURCEA(templateId), RT_DIALOG);
  if (found == nullptr) return false;
  const auto* words = static_cast<const WORD*>(::LockResource(::LoadResource(module, found)));
  constexpr WORD kExtended = 0xFFFF;
  const WORD* place = words + (words[1] == kExtended ? 9 : 5);
  return place[0] == 0 && place[1] == 0;
}

// Of the screen that a window is on, without the task bar.
CRect WorkArea(HWND window) {
  MONITORINFO screen = {};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoA(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  return screen.rcWork;
}

// A place as near to the wanted one as lets something of that length lie in between; the beginning
// counts where it is too long.
LONG Within(LONG first, LONG last, LONG length, LONG wanted) {
  return std::max(first, std::min(wanted, last - length));
}

}  // namespace

BEGIN_MESSAGE_MAP(CDialog, CWnd)
END_MESSAGE_MAP()

INT_PTR CDialog::DoModal() {
  m_loopRuns = true;
  const HWND owner = m_parent;
  const bool ownerWaits = owner != nullptr && ::IsWindowEnabled(owner);
  const INT_PTR result =
      ::DialogBoxParamA(AfxGetResourceHandle(), MAKEINTRESOURCEA(m_templateId), m_parent,
                        &CDialog::DialogProc, reinterpret_cast<LPARAM>(this));
  // EndDialog lets it go on; a dialog that was destroyed instead may have left that undone.
  if (ownerWaits && !::IsWindowEnabled(owner)) ::EnableWindow(owner, TRUE);
  return result;
}

BOOL CDialog::Create(UINT templateId, HWND parent) {
  HWND window = ::CreateDialogParamA(AfxGetResourceHandle(), MAKEINTRESOURCEA(templateId), parent,
                                     &CDialog::DialogProc, reinterpret_cast<LPARAM>(this));
  if (window == nullptr) return FALSE;
  m_shownWindow = window;
  CModelessKeys::Watch(window);
  return TRUE;
}

void CDialog::CloseFromAnyThread() {
  const HWND window = m_shownWindow;
  const DWORD thread = ::GetWindowThreadProcessId(window, nullptr);
  if (FromHandlePermanent(window) != this) {
    // It has gone, and its handle may be another window's by now.
    WindowIsLost();
  } else if (thread == ::GetCurrentThreadId()) {
    DestroyWindow();
    // A modal loop of a window that went along looks for that only after a message of its own.
    ::PostThreadMessageA(thread, WM_NULL, 0, 0);
  } else if (AfxIsUnloading()) {
    // That thread must not come back into the module: the bare window is the system's.
    if (!GiveUpWindow()) return;
    CModelessKeys::Forget(window);
    ::SetWindowLongPtrA(window, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&::DefWindowProcA));
    ::PostMessageA(window, WM_CLOSE, 0, 0);
  } else {
    AfxDestroyOnItsThread(window);
  }
}

void CDialog::EndDialog(INT_PTR result) {
  m_loopRuns = false;
  ::EndDialog(m_hWnd, result);
}

BOOL CDialog::OnInitDialog() {
  UpdateData(FALSE);
  return TRUE;
}

void CDialog::OnOK() {
  UpdateData(TRUE);
  EndDialog(IDOK);
}

void CDialog::OnCancel() {
  EndDialog(IDCANCEL);
}

BOOL CDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
  if (CWnd::OnCommand(wParam, lParam)) return TRUE;
  if (HIWORD(wParam) != BN_CLICKED) return FALSE;
  switch (LOWORD(wParam)) {
    case IDOK:
      OnOK();
      return TRUE;
    case IDCANCEL:
      OnCancel();
      return TRUE;
    default:
      return FALSE;
  }
}

LRESULT CDialog::DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) return OnInitDialog();
  if (message == kMessageDestroy) return DestroyWindow();
  if (message == WM_NCDESTROY) {
    CModelessKeys::Forget(m_hWnd);
    // A modal dialog that was destroyed, as with its owner: its loop notices that with the next
    // message, which it throws away, and that had better not be one of the host's.
    if (m_loopRuns) ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
    m_loopRuns = false;
  }
  return CWnd::DefWindowProc(message, wParam, lParam);
}

// The window is taken over at its first dialog message; from then on messages reach the object
// first and this procedure only lets the system do the rest.
INT_PTR CALLBACK CDialog::DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  const CModuleCall call;
  if (message != WM_INITDIALOG || FromHandlePermanent(window) != nullptr) return FALSE;
  auto* dialog = reinterpret_cast<CDialog*>(lParam);
  dialog->SubclassWindow(window);
  const CRect before = dialog->GetWindowRect();
  const LRESULT result = AfxWndProc(window, message, wParam, 0);
  if (FromHandlePermanent(window) == dialog) dialog->CentreWhenUnplaced(before);
  return result;
}

// A template at (0, 0) leaves the place to the dialog; one that has not chosen any comes into the
// middle of its owner, or of the screen's work area, and does not leave that area.
void CDialog::CentreWhenUnplaced(const CRect& before) const {
  const CRect window = GetWindowRect();
  const bool moved = window.left != before.left || window.top != before.top;
  if (moved || !IsUnplaced(m_templateId) || ::IsWindowVisible(m_hWnd)) return;
  const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
  const bool ownerShows = owner != nullptr && ::IsWindowVisible(owner) && !::IsIconic(owner);
  const CRect screen = WorkArea(ownerShows ? owner : m_hWnd);
  CRect area = screen;
  if (ownerShows) ::GetWindowRect(owner, &area);
  const LONG x = Within(screen.left, screen.right, window.Width(),
                        area.left + (area.Width() - window.Width()) / 2);
  const LONG y = Within(screen.top, screen.bottom, window.Height(),
                        area.top + (area.Height() - window.Height()) / 2);
  ::SetWindowPos(m_hWnd, nullptr, x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
