// SPDX-License-Identifier: MIT
// The two brushes that all dark dialogs share. The application object creates them when the library
// is loaded and deletes them when it is unloaded.
#pragma once

#include "framework/win/gdi_object.h"

struct SharedBrushes {
  CBrush* dark = nullptr;
  CBrush* black = nullptr;
};

/// The library's only pair; null pointers before CreateSharedBrushes.
const SharedBrushes& GetSharedBrushes();
void CreateSharedBrushes();
void DeleteSharedBrushes();
