// SPDX-License-Identifier: MIT
// velquin-gallery: shows the gallery until it is closed.
#include "framework/base/win_app.h"
#include "framework/win/windows_base.h"
#include "library/ui/shared_brushes.h"
#include "tests/library/gallery/dlg_gallery.h"
#include "tests/support/fault_count.h"

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
