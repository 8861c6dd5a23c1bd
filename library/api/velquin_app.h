// SPDX-License-Identifier: MIT
// CVelquinApp: the library's application object. One static object, made after the engine.
#pragma once

#include "framework/base/win_app.h"

class CVelquinApp : public CWinApp {
 public:
  /// Starts the sockets. @return FALSE, after a message, when that fails: the library does not
  /// load.
  BOOL InitInstance() override;
  int ExitInstance() override;
  /// Every message of the library, in the library's own box with the application name as title.
  int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId) override;
};
