// SPDX-License-Identifier: MIT
// What the library's windows need around them when a test program contains them itself: the
// application object, started as at load.
#pragma once

#include "library/api/velquin_app.h"

namespace ui_test {

/// Starts the application object once; every test that opens a window calls it first.
CVelquinApp& App();

}  // namespace ui_test
