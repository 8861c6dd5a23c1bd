// SPDX-License-Identifier: MIT
// The string manager of this library's own strings: texts live on the C heap, the empty text is
// one shared object. Any thread.
#pragma once

#include "framework/base/cstring.h"

/// @return the manager; never destroyed.
IAtlStringMgr* AfxGetStringManager();
