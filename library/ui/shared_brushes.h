// SPDX-License-Identifier: MIT
// The two brushes that all dark dialogs share. Made when the library is loaded and deleted when it
// is unloaded; the application object does both.
#pragma once

#include "framework/win/gdi_object.h"

struct SharedBrushes {
  CBrush* dark = nullptr;
  CBrush* black = nullptr;
};

/// The library's one pair; null pointers before CreateSharedBrushes.
const SharedBrushes& GetSharedBrushes();
void CreateSharedBrushes();
void DeleteSharedBrushes();
