// SPDX-License-Identifier: MIT
// CDialog: a window made from a dialog template of the library, modal or modeless. Differences from
// the documented class: templates by number only; Esc works in a modeless dialog with every message
// loop of the host.
#pragma once

#include "framework/win/wnd.h"

class CDialog : public CWnd {
 public:
  /// @param templateId resource number @param parent the owner's window; may be null
  explicit CDialog(UINT templateId, HWND parent = nullptr)
      : m_templateId(templateId), m_parent(parent) {}

  /// Shows the dialog and runs it until EndDialog. @return EndDialog's argument; -1 on failure.
  virtual INT_PTR DoModal();
  /// Creates the dialog and returns at once. The object must outlive the window. @return FALSE on
  /// failure.
  virtual BOOL Create(UINT templateId, HWND parent);
  /// Destroys the window of a modeless dialog: at once on its own thread, soon from another one.
  /// The object must be counted (HoldByCaller), since the window may use it for some time. Any
  /// thread.
  void CloseFromAnyThread();
  /// Ends a modal dialog; a modeless one is only hidden.
  void EndDialog(INT_PTR result);

 protected:
  DECLARE_MESSAGE_MAP()

  /// @return TRUE lets the system set the focus.
  virtual BOOL OnInitDialog();
  virtual void OnOK();      ///< Enter, or control 1
  virtual void OnCancel();  ///< Esc, control 2, or the close box
  BOOL OnCommand(WPARAM wParam, LPARAM lParam) override;
  LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

 private:
  friend class CModelessKeys;

  static INT_PTR CALLBACK DialogProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

  void CentreWhenUnplaced(const CRect& before) const;

  const UINT m_templateId;
  const HWND m_parent;
  bool m_loopRuns = false;       // DoModal runs, and its loop was not ended
  HWND m_shownWindow = nullptr;  // of Create; kept after the window is destroyed
};
