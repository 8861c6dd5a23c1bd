// SPDX-License-Identifier: MIT
#include "framework/win/data_exchange.h"

#include <vector>

#include "framework/win/wnd.h"

void DDX_Text(CDataExchange* exchange, UINT id, CString& text) {
  const HWND control = exchange->m_pDlgWnd->GetDlgItem(id);
  if (!exchange->m_bSaveAndValidate) {
    ::SetWindowTextA(control, text);
    return;
  }
  std::vector<char> buffer(static_cast<size_t>(::GetWindowTextLengthA(control)) + 1);
  const int length = ::GetWindowTextA(control, buffer.data(), static_cast<int>(buffer.size()));
  text = CString(buffer.data(), length);
}

void DDX_Slider(CDataExchange* exchange, UINT id, int& position) {
  const HWND control = exchange->m_pDlgWnd->GetDlgItem(id);
  if (exchange->m_bSaveAndValidate) {
    position = static_cast<int>(::SendMessageA(control, TBM_GETPOS, 0, 0));
  } else {
    ::SendMessageA(control, TBM_SETPOS, TRUE, position);
  }
}
