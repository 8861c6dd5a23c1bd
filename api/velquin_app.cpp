// SPDX-License-Identifier: MIT
#include "api/velquin_app.h"

#include "framework/base/message_box.h"
#include "res/string_ids.h"
#include "ui/orl_message_box.h"
#include "ui/shared_brushes.h"

BOOL CVelquinApp::InitInstance() {
  if (!AfxSocketInit()) {
    AfxMessageBox(kTextSocketsFailed);
    return FALSE;
  }
  CreateSharedBrushes();
  return TRUE;
}

int CVelquinApp::ExitInstance() {
  DeleteSharedBrushes();
  return CWinApp::ExitInstance();
}

int CVelquinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT) {
  // The library has no main window, so its boxes have no owner.
  COrlMessageBox box(nullptr, prompt, type);
  return static_cast<int>(box.DoModal());
}
