// SPDX-License-Identifier: MIT
#include "tests/library/ui/window_texts.h"

namespace ui_test {

const WindowTexts kWindowTexts = JapaneseWindowTexts(932);

}  // namespace ui_test
