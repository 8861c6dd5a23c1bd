// SPDX-License-Identifier: MIT
// The string manager of this library's strings. Texts live on the C heap. The empty text is one
// shared object, whose owners are counted like those of every text: hosts hold it in their strings,
// too, and count it. Any thread.
#pragma once

#include "framework/base/cstring.h"

/// @return the manager; never destroyed.
IAtlStringMgr* AfxGetStringManager();
