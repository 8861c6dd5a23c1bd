// SPDX-License-Identifier: MIT
// Counts the blocks of memory that the program holds.
#pragma once

/// @return the blocks from `new` that were not deleted yet, of all threads.
int LiveBlocks();
