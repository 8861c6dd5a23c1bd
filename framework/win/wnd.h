// SPDX-License-Identifier: MIT
// CWnd: a window of the library. A window property holds the object of a window, so each thread
// finds its windows without a map. Differences from the documented class: no temporary objects
// (other windows are plain handles); an object can be counted (HoldByCaller); only the members that
// library/ui/ uses. One object per window; used on the thread that created the window, except for
// Release.
//
// Who may delete an object: a handler may run a message loop (a message box, a modal dialog), and
// the host may close the window in that loop. So an object on the heap is counted. Its window holds
// it until no handler of it or of its controls is on the stack; its owner holds it until Release.
#pragma once

#include <atomic>

#include "framework/base/cstring.h"
#include "framework/win/geometry.h"
#include "framework/win/message_map.h"

class CDataExchange;
class CDC;

/// The window procedure of every window of the library.
LRESULT CALLBACK AfxWndProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

/// The window looks active although another one is.
inline constexpr UINT WF_STAYACTIVE = 0x0020;

class CWnd {
 public:
  CWnd() = default;
  virtual ~CWnd();
  CWnd(const CWnd&) = delete;
  CWnd& operator=(const CWnd&) = delete;

  HWND m_hWnd = nullptr;
  UINT m_nFlags = 0;  ///< WF_... bits; never set in the framework
  HWND GetSafeHwnd() const { return m_hWnd; }

  /// Returns the object of a window; null if the window is not the library's.
  static CWnd* FromHandlePermanent(HWND window);

  /// Takes over a window's messages until it is destroyed. @return FALSE if there is no window.
  BOOL SubclassWindow(HWND window);
  /// @param parent the object that holds this one as a member
  BOOL SubclassDlgItem(UINT id, const CWnd* parent);
  virtual BOOL DestroyWindow();

  /// For an object created with new: it then deletes itself after Release and the end of its
  /// window, whichever comes later. Call it before the object has a window.
  void HoldByCaller() { m_holders = 1; }
  /// The caller of HoldByCaller does not need the object any more. Any thread.
  void Release();
  /// The window was destroyed without a message, as when its thread ends. Does no harm if there was
  /// a message. Any thread.
  void WindowIsLost();
  /// Returns window and controls to the system, without calling their thread: they no longer lead
  /// to any of the library's code. @return false, and does nothing, if the window is destroyed or
  /// being destroyed. Any thread.
  bool GiveUpWindow();

  LRESULT SendMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageA(m_hWnd, message, wParam, lParam);
  }
  BOOL PostMessage(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::PostMessageA(m_hWnd, message, wParam, lParam);
  }
  CString GetWindowText() const;
  void SetWindowText(LPCSTR text) const { ::SetWindowTextA(m_hWnd, text); }
  DWORD GetStyle() const { return static_cast<DWORD>(::GetWindowLongA(m_hWnd, GWL_STYLE)); }
  void ModifyStyle(DWORD remove, DWORD add) const;
  CRect GetClientRect() const;
  CRect GetWindowRect() const;
  void ScreenToClient(RECT& rect) const;
  HWND GetDlgItem(UINT id) const { return ::GetDlgItem(m_hWnd, static_cast<int>(id)); }
  int GetDlgCtrlID() const { return ::GetDlgCtrlID(m_hWnd); }
  HWND GetParent() const { return ::GetParent(m_hWnd); }
  HFONT GetFont() const { return reinterpret_cast<HFONT>(SendMessage(WM_GETFONT)); }
  BOOL IsWindowEnabled() const { return ::IsWindowEnabled(m_hWnd); }
  void EnableWindow(BOOL enable) const { ::EnableWindow(m_hWnd, enable); }
  void Invalidate(BOOL erase = TRUE) const { ::InvalidateRect(m_hWnd, nullptr, erase); }
  void MoveWindow(const RECT& rect) const;

  /// Moves data between members and controls. @param save TRUE from the controls to the members
  void UpdateData(BOOL save);

 protected:
  friend LRESULT CALLBACK AfxWndProc(HWND, UINT, WPARAM, LPARAM);
  friend void AfxDeleteObject(CWnd* object);
  friend void AfxLetCallsReturn(DWORD timeoutMs);

  static const AFX_MSGMAP* GetThisMessageMap();
  virtual const AFX_MSGMAP* GetMessageMap() const { return GetThisMessageMap(); }

  /// Looks up the message in the maps, then does what the system does.
  virtual LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  virtual LRESULT DefWindowProc(UINT message, WPARAM wParam, LPARAM lParam);
  /// The default handling of the current message by the system.
  LRESULT Default();
  /// WM_COMMAND without a map entry. @return TRUE when handled.
  virtual BOOL OnCommand(WPARAM wParam, LPARAM lParam);
  /// A request to draw, sent to the parent and forwarded to the owner-drawn control.
  virtual void DrawItem(DRAWITEMSTRUCT*) {}
  virtual HBRUSH OnCtlColor(CDC& dc, HWND control, UINT kind);
  virtual void DoDataExchange(CDataExchange*) {}
  /// The window is destroyed; the object may delete itself.
  virtual void PostNcDestroy() {}

  LRESULT CtlColor(WPARAM wParam, LPARAM lParam, UINT kind);
  void Attach(HWND window);

 private:
  struct Message {
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
  };

  LRESULT Handle(const Message& message);
  const AFX_MSGMAP_ENTRY* FindEntry(const Message& message) const;
  void Detached();
  void GiveBackProcedure();
  void HandlerLeft();

  WNDPROC m_superProc = nullptr;            // the window's previous procedure
  Message m_current = {};                   // being handled
  CWnd* m_keeper = this;                    // the object that contains this one
  CWnd* m_nextKeptBack = nullptr;           // while the module is being unloaded
  int m_handlers = 0;                       // of this object and its parts, on the stack
  bool m_windowGone = false;                // the handlers on the stack hold the object instead
  std::atomic<int> m_holders = 0;           // 0: not counted
  std::atomic<bool> m_windowHolds = false;  // the code that clears it releases the window's hold
};
