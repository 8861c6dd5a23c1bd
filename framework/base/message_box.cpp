// SPDX-License-Identifier: MIT
#include "framework/base/message_box.h"

#include "framework/base/cstring.h"
#include "framework/base/win_app.h"
#include "platform/user_notice.h"

int AfxMessageBox(LPCSTR prompt, UINT type, UINT helpId) {
  if (CWinApp* app = AfxGetApp(); app != nullptr) return app->DoMessageBox(prompt, type, helpId);
  return platform::ShowMessageBox(prompt, "", type);
}

int AfxMessageBox(UINT promptId, UINT type, UINT helpId) {
  CString prompt;
  prompt.LoadString(promptId);
  return AfxMessageBox(prompt.GetString(), type, helpId);
}
