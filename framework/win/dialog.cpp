// SPDX-License-Identifier: MIT
#include "framework/win/dialog.h"

#include <algorithm>

#include "framework/win/instance.h"
#include "framework/win/modeless_keys.h"
#include "framework/win/module_calls.h"
#include "framework/win/window_closer.h"

namespace {

// The position is in the header of the template, which has two layouts.
bool IsUnplaced(UINT templateId) {
  const HINSTANCE module = AfxGetResourceHandle();
  const HRSRC found = ::FindResourceA(module, MAKEINTRESOURCEA(templateId), RT_DIALOG);
  if (found == nullptr) return false;
  const auto* words = static_cast<const WORD*>(::LockResource(::LoadResource(module, found)));
  constexpr WORD kExtended = 0xFFFF;
  const WORD* place = words + (words[1] == kExtended ? 9 : 5);
  return place[0] == 0 && place[1] == 0;
}

// The work area of a window's screen, without the task bar.
CRect WorkArea(HWND window) {
  MONITORINFO screen = {};
  screen.cbSize = sizeof screen;
  ::GetMonitorInfoA(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &screen);
  return screen.rcWork;
}

// The position nearest to the wanted one at which the length fits in between. If it is too long,
// the beginning counts.
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
  // EndDialog re-enables the owner; a dialog that was destroyed instead may not have done so.
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
    // The window is destroyed, and its handle may belong to another window by now.
    WindowIsLost();
  } else if (thread == ::GetCurrentThreadId()) {
    DestroyWindow();
    // A modal loop of a window that was destroyed with it checks only after a message of its own.
    ::PostThreadMessageA(thread, WM_NULL, 0, 0);
  } else if (AfxIsUnloading()) {
    // That thread must not return into the module: the window alone belongs to the system.
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
    // A modal dialog was destroyed, for example with its owner. Its loop notices that with the next
    // message and discards it. Without this message that would be one of the host's.
    if (m_loopRuns) ::PostThreadMessageA(::GetCurrentThreadId(), WM_NULL, 0, 0);
    m_loopRuns = false;
  }
  return CWnd::DefWindowProc(message, wParam, lParam);
}

// Subclasses the window at its first dialog message. From then on messages reach the object first,
// and this procedure only lets the system do the rest.
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

// A template at (0, 0) leaves the position to the dialog. A dialog that has not chosen one is
// centred on its owner, or on the screen's work area, and stays inside that area.
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
