// SPDX-License-Identifier: MIT
#include "library/ui/shared_brushes.h"

#include "library/ui/colours.h"

namespace {

SharedBrushes brushes;

void Delete(CBrush*& brush) {
  delete brush;
  brush = nullptr;
}

}  // namespace

const SharedBrushes& GetSharedBrushes() {
  return brushes;
}

void CreateSharedBrushes() {
  DeleteSharedBrushes();
  brushes = {new CBrush(kColourDark), new CBrush(kColourBlack)};
}

void DeleteSharedBrushes() {
  Delete(brushes.dark);
  Delete(brushes.black);
}
