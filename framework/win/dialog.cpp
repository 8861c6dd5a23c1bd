// SPDX-License-Identifier: MIT
#include "framework/win/dialog.h"

#include "framework/win/instance.h"
#include "framework/win/modeless_keys.h"
#include "framework/win/module_calls.h"
#include "framework/win/window_closer.h"

BEGIN_MESSAGE_MAP(CDialog, CWnd)
END_MESSAGE_MAP()

INT_PTR CDialog::DoModal() {
  m_loopRuns = true;
  return ::DialogBoxParamA(AfxGetResourceHandle(), MAKEINTRESOURCEA(m_templateId), m_parent,
                           &CDialog::DialogProc, reinterpret_cast<LPARAM>(this));
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
// middle of its owner, or of the screen's work area.
void CDialog::CentreWhenUnplaced(const CRect& before) const {
  const HWND owner = ::GetWindow(m_hWnd, GW_OWNER);
  POINT unplaced = {0, 0};
  if (owner != nullptr) ::ClientToScreen(owner, &unplaced);
  const CRect window = GetWindowRect();
  const bool placed = before.left != unplaced.x || before.top != unplaced.y ||
                      window.left != before.left || window.top != before.top;
  if (placed || ::IsWindowVisible(m_hWnd)) return;
  CRect area;
  if (owner != nullptr && ::IsWindowVisible(owner)) {
    ::GetWindowRect(owner, &area);
  } else {
    ::SystemParametersInfoA(SPI_GETWORKAREA, 0, static_cast<RECT*>(&area), 0);
  }
  ::SetWindowPos(m_hWnd, nullptr, area.left + (area.Width() - window.Width()) / 2,
                 area.top + (area.Height() - window.Height()) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}
