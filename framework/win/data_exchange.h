// SPDX-License-Identifier: MIT
// Data exchange between the members of a dialog and its controls.
#pragma once

#include "framework/base/cstring.h"
#include "framework/win/windows_base.h"

class CWnd;

class CDataExchange {
 public:
  CDataExchange(CWnd* dialog, BOOL save) : m_bSaveAndValidate(save), m_pDlgWnd(dialog) {}

  const BOOL m_bSaveAndValidate;  ///< TRUE: from the controls to the members
  CWnd* const m_pDlgWnd;
};

/// Exchanges a text. @param id of an existing control of the dialog
void DDX_Text(CDataExchange* exchange, UINT id, CString& text);
/// Exchanges the position of a trackbar.
void DDX_Slider(CDataExchange* exchange, UINT id, int& position);
