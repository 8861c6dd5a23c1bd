// SPDX-License-Identifier: MIT
// An application object that shows no message box but remembers it.
#pragma once

#include <string>
#include <vector>

#include "framework/base/win_app.h"

class BoxRecorder : public CWinApp {
 public:
  struct Box {
    std::string text;  ///< in the system's narrow code page
    UINT type;
    UINT helpId;
  };

  BoxRecorder() : CWinApp("recording") {}
  int DoMessageBox(LPCSTR prompt, UINT type, UINT helpId) override {
    boxes.push_back({prompt, type, helpId});
    return 1;
  }

  std::vector<Box> boxes;
};
