// SPDX-License-Identifier: MIT
// The system's controls as windows of the library: CButton, CStatic, CEdit, CSliderCtrl and
// CSpinButtonCtrl. Each subclasses a control of a dialog template. Only the members that
// library/ui/ uses.
#pragma once

#include "framework/win/wnd.h"

class CButton : public CWnd {
 public:
  /// @return BST_... bits: 1 checked, 4 pushed, 8 focused
  UINT GetState() const { return static_cast<UINT>(SendMessage(BM_GETSTATE)); }
  int GetCheck() const { return static_cast<int>(SendMessage(BM_GETCHECK)); }
  HICON GetIcon() const { return reinterpret_cast<HICON>(SendMessage(BM_GETIMAGE, IMAGE_ICON)); }
  void SetIcon(HICON icon) const {
    SendMessage(BM_SETIMAGE, IMAGE_ICON, reinterpret_cast<LPARAM>(icon));
  }
};

class CStatic : public CWnd {};

class CEdit : public CWnd {};

class CSliderCtrl : public CWnd {
 public:
  int GetPos() const { return static_cast<int>(SendMessage(TBM_GETPOS)); }
  void SetPos(int position) const { SendMessage(TBM_SETPOS, TRUE, position); }
  void SetRange(int first, int last, BOOL redraw) const {
    SendMessage(TBM_SETRANGEMIN, FALSE, first);
    SendMessage(TBM_SETRANGEMAX, static_cast<WPARAM>(redraw), last);
  }
  void SetTicFreq(int frequency) const {
    SendMessage(TBM_SETTICFREQ, static_cast<WPARAM>(frequency));
  }
  UINT GetNumTics() const { return static_cast<UINT>(SendMessage(TBM_GETNUMTICS)); }
  CRect GetChannelRect() const {
    CRect rect;
    SendMessage(TBM_GETCHANNELRECT, 0, reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
    return rect;
  }
  CRect GetThumbRect() const {
    CRect rect;
    SendMessage(TBM_GETTHUMBRECT, 0, reinterpret_cast<LPARAM>(static_cast<RECT*>(&rect)));
    return rect;
  }
  int GetRangeMin() const { return static_cast<int>(SendMessage(TBM_GETRANGEMIN)); }
  int GetRangeMax() const { return static_cast<int>(SendMessage(TBM_GETRANGEMAX)); }
  int GetSelStart() const { return static_cast<int>(SendMessage(TBM_GETSELSTART)); }
  int GetSelEnd() const { return static_cast<int>(SendMessage(TBM_GETSELEND)); }
};

class CSpinButtonCtrl : public CWnd {};
