// SPDX-License-Identifier: MIT
// CVelquinApp: the library's application object. One static object, built after the engine.
#pragma once

#include "framework/base/win_app.h"

class CVelquinApp : public CWinApp {
 public:
  /// Starts the sockets. @return FALSE, after a message, if that fails: the library then does not
  /// load.
  BOOL InitInstance() override;
  int ExitInstance() override;
  /// Shows every message of the library in its own box, with the application name as title.
  int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId) override;
};
