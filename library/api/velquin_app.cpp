// SPDX-License-Identifier: MIT
#include "library/api/velquin_app.h"

#include "framework/base/message_box.h"
#include "library/ui/orl_message_box.h"
#include "library/ui/shared_brushes.h"
#include "res/string_ids.h"

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
  // In place of a main window, which the library has not, the calling thread's active one: a window
  // that asks waits for the answer. The worker has none, so its boxes block nobody else.
  COrlMessageBox box(::GetActiveWindow(), prompt, type);
  return static_cast<int>(box.DoModal());
}
