// SPDX-License-Identifier: MIT
// Counts the blocks of memory that the program holds.
#pragma once

/// @return the blocks from `new` that were not deleted yet, of all threads. Only differences count:
/// what a shared library takes is not seen, though the program may give it back.
int LiveBlocks();
