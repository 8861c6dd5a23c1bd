// SPDX-License-Identifier: MIT
#include "api/velquin_app.h"

#include "framework/base/message_box.h"
#include "res/string_ids.h"

BOOL CVelquinApp::InitInstance() {
  if (!AfxSocketInit()) {
    AfxMessageBox(kTextSocketsFailed);
    return FALSE;
  }
  return TRUE;
}

int CVelquinApp::ExitInstance() {
  return CWinApp::ExitInstance();
}

int CVelquinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT helpId) {
  return CWinApp::DoMessageBox(prompt, type, helpId);
}
