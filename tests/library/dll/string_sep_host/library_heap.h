// SPDX-License-Identifier: MIT
// What the library takes from the C heap, counted in its calls. A walk over the heaps would miss
// small blocks: newer systems keep them in larger ones, which are walked over as one.
#pragma once

#include <stdint.h>

/// Has velquin.dll call counting stand-ins for malloc, calloc, realloc and free from now on.
/// @return false when it does not import malloc or free: then it takes its memory elsewhere.
bool CountLibraryBlocks();

/// @return blocks taken since then less those given back; one thread at a time.
int64_t LibraryBlocks();
