// SPDX-License-Identifier: MIT
#include "tests/library/ui/window_texts.h"

namespace ui_test {

const WindowTexts kWindowTexts = EnglishWindowTexts(1252);

}  // namespace ui_test
