// SPDX-License-Identifier: MIT
// Message maps: which member of a class handles which message. The macros have the documented names
// and stand between BEGIN_MESSAGE_MAP(class, base) and END_MESSAGE_MAP(); a class declares its map
// with DECLARE_MESSAGE_MAP(). Difference from the documented mechanism: an entry holds a small
// function that unpacks the message, and the compiler checks the member's signature there.
#pragma once

#include "framework/win/windows_base.h"

class CWnd;

struct AFX_MSGMAP_ENTRY {
  UINT message;  ///< 0 ends the map
  UINT code;     ///< notification code of WM_COMMAND
  UINT id;       ///< control of WM_COMMAND
  LRESULT (*handler)(CWnd* window, WPARAM wParam, LPARAM lParam);
};

struct AFX_MSGMAP {
  const AFX_MSGMAP* (*base)();  ///< null for the root
  const AFX_MSGMAP_ENTRY* entries;
};

#define DECLARE_MESSAGE_MAP()                   \
 protected:                                     \
  static const AFX_MSGMAP* GetThisMessageMap(); \
  const AFX_MSGMAP* GetMessageMap() const override;

#define BEGIN_MESSAGE_MAP(theClass, baseClass)        \
  const AFX_MSGMAP* theClass::GetMessageMap() const { \
    return GetThisMessageMap();                       \
  }                                                   \
  const AFX_MSGMAP* theClass::GetThisMessageMap() {   \
    using ThisClass [[maybe_unused]] = theClass;      \
    using BaseClass = baseClass;                      \
    struct Base : BaseClass {                         \
      static const AFX_MSGMAP* Map() {                \
        return BaseClass::GetThisMessageMap();        \
      }                                               \
    };                                                \
    static const AFX_MSGMAP_ENTRY entries[] = {
#define END_MESSAGE_MAP()                              \
  {                                                    \
    0, 0, 0, nullptr                                   \
  }                                                    \
  }                                                    \
  ;                                                    \
  static const AFX_MSGMAP map = {&Base::Map, entries}; \
  return &map;                                         \
  }

// One entry: `call` may use self (the object), wParam and lParam, and is the message's result.
#define AFX_ENTRY(message, call)                                                                 \
  {message, 0, 0,                                                                                \
   [](CWnd* window, [[maybe_unused]] WPARAM wParam, [[maybe_unused]] LPARAM lParam) -> LRESULT { \
     auto* self = static_cast<ThisClass*>(window);                                               \
     return call;                                                                                \
   }},

#define ON_MESSAGE(message, member) AFX_ENTRY(message, self->member(wParam, lParam))
#define ON_BN_CLICKED(control, member)                                            \
  {WM_COMMAND, BN_CLICKED, control, [](CWnd* window, WPARAM, LPARAM) -> LRESULT { \
     static_cast<ThisClass*>(window)->member();                                   \
     return 0;                                                                    \
   }},

#define AFX_POINT_OF(lParam) \
  CPoint(static_cast<short>(LOWORD(lParam)), static_cast<short>(HIWORD(lParam)))

#define ON_WM_PAINT() AFX_ENTRY(WM_PAINT, (self->OnPaint(), 0))
#define ON_WM_NCPAINT() AFX_ENTRY(WM_NCPAINT, (self->OnNcPaint(), 0))
#define ON_WM_NCACTIVATE() AFX_ENTRY(WM_NCACTIVATE, self->OnNcActivate(wParam != 0))
#define ON_WM_ERASEBKGND() \
  AFX_ENTRY(WM_ERASEBKGND, self->OnEraseBkgnd(reinterpret_cast<HDC>(wParam)))
#define ON_WM_ENABLE() AFX_ENTRY(WM_ENABLE, (self->OnEnable(wParam != 0), 0))
#define ON_WM_SETFOCUS() \
  AFX_ENTRY(WM_SETFOCUS, (self->OnSetFocus(reinterpret_cast<HWND>(wParam)), 0))
#define ON_WM_KILLFOCUS() \
  AFX_ENTRY(WM_KILLFOCUS, (self->OnKillFocus(reinterpret_cast<HWND>(wParam)), 0))
#define ON_WM_TIMER() AFX_ENTRY(WM_TIMER, (self->OnTimer(wParam), 0))
#define ON_WM_KEYDOWN() AFX_ENTRY(WM_KEYDOWN, (self->OnKeyDown(static_cast<UINT>(wParam)), 0))
#define ON_WM_LBUTTONDOWN() \
  AFX_ENTRY(WM_LBUTTONDOWN, \
            (self->OnLButtonDown(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_LBUTTONUP() \
  AFX_ENTRY(WM_LBUTTONUP, (self->OnLButtonUp(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_LBUTTONDBLCLK() \
  AFX_ENTRY(WM_LBUTTONDBLCLK, \
            (self->OnLButtonDblClk(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_MOUSEMOVE() \
  AFX_ENTRY(WM_MOUSEMOVE, (self->OnMouseMove(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_CANCELMODE() AFX_ENTRY(WM_CANCELMODE, (self->OnCancelMode(), 0))
#define ON_WM_CAPTURECHANGED() \
  AFX_ENTRY(WM_CAPTURECHANGED, (self->OnCaptureChanged(reinterpret_cast<HWND>(lParam)), 0))
#define ON_WM_NCHITTEST() AFX_ENTRY(WM_NCHITTEST, self->OnNcHitTest(AFX_POINT_OF(lParam)))
#define ON_WM_NCMOUSEMOVE() \
  AFX_ENTRY(WM_NCMOUSEMOVE, \
            (self->OnNcMouseMove(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_NCLBUTTONDOWN() \
  AFX_ENTRY(WM_NCLBUTTONDOWN, \
            (self->OnNcLButtonDown(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_NCLBUTTONUP() \
  AFX_ENTRY(WM_NCLBUTTONUP, \
            (self->OnNcLButtonUp(static_cast<UINT>(wParam), AFX_POINT_OF(lParam)), 0))
#define ON_WM_SHOWWINDOW() \
  AFX_ENTRY(WM_SHOWWINDOW, (self->OnShowWindow(wParam != 0, static_cast<UINT>(lParam)), 0))
// All kinds of control colours; the argument CTLCOLOR_... is the control's kind.
#define ON_WM_CTLCOLOR()                                                              \
  AFX_ENTRY(WM_CTLCOLORMSGBOX, self->CtlColor(wParam, lParam, CTLCOLOR_MSGBOX))       \
  AFX_ENTRY(WM_CTLCOLOREDIT, self->CtlColor(wParam, lParam, CTLCOLOR_EDIT))           \
  AFX_ENTRY(WM_CTLCOLORLISTBOX, self->CtlColor(wParam, lParam, CTLCOLOR_LISTBOX))     \
  AFX_ENTRY(WM_CTLCOLORBTN, self->CtlColor(wParam, lParam, CTLCOLOR_BTN))             \
  AFX_ENTRY(WM_CTLCOLORDLG, self->CtlColor(wParam, lParam, CTLCOLOR_DLG))             \
  AFX_ENTRY(WM_CTLCOLORSCROLLBAR, self->CtlColor(wParam, lParam, CTLCOLOR_SCROLLBAR)) \
  AFX_ENTRY(WM_CTLCOLORSTATIC, self->CtlColor(wParam, lParam, CTLCOLOR_STATIC))
