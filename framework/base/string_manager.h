// SPDX-License-Identifier: MIT
// The string manager of this library's own strings: texts live on the C heap, the empty text is
// one shared object, whose owners are counted as those of every text: hosts have it in their
// strings, too, and count them. Any thread.
#pragma once

#include "framework/base/cstring.h"

/// @return the manager; never destroyed.
IAtlStringMgr* AfxGetStringManager();
