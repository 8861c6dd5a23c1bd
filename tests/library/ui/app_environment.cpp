// SPDX-License-Identifier: MIT
#include "tests/library/ui/app_environment.h"

#include <cstdlib>

namespace ui_test {

CVelquinApp& App() {
  struct Started {
    Started() {
      app.SetCurrentHandles();
      if (!app.InitInstance()) std::abort();
    }
    ~Started() { app.ExitInstance(); }
    CVelquinApp app;
  };
  static Started started;
  return started.app;
}

}  // namespace ui_test
