// SPDX-License-Identifier: MIT
// How many drawing objects (pens, brushes, fonts, bitmaps, contexts ...) this process has.
#pragma once

/// Counted in the system's own table, because Wine's GetGuiResources always answers 0.
int CountGdiObjects();
