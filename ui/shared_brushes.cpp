// SPDX-License-Identifier: MIT
#include "ui/shared_brushes.h"

#include "ui/colours.h"

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
