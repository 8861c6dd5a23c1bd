// SPDX-License-Identifier: MIT
// velquin-gallery: shows the gallery until it is closed.
#include "framework/base/win_app.h"
#include "framework/win/windows_base.h"
#include "tests/gallery/dlg_gallery.h"
#include "tests/support/fault_count.h"
#include "ui/shared_brushes.h"

int main() {
  EndAtFaults(98);
  INITCOMMONCONTROLSEX classes = {sizeof classes, ICC_BAR_CLASSES | ICC_UPDOWN_CLASS};
  ::InitCommonControlsEx(&classes);
  CWinApp app("Velquin gallery");
  CreateSharedBrushes();
  const INT_PTR result = CDlgGallery().DoModal();
  DeleteSharedBrushes();
  return result == -1 ? 1 : 0;
}
