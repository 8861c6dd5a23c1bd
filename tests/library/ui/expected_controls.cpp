// SPDX-License-Identifier: MIT
#include "tests/library/ui/expected_controls.h"

#include <gtest/gtest.h>

#include "tests/library/ui/window_tools.h"

namespace ui_test {
namespace {

constexpr DWORD kState = WS_CHILD | WS_VISIBLE | WS_DISABLED;

std::vector<HWND> ChildrenOf(HWND dialog) {
  std::vector<HWND> children;
  for (HWND at = GetWindow(dialog, GW_CHILD); at != nullptr; at = GetWindow(at, GW_HWNDNEXT))
    children.push_back(at);
  return children;
}

}  // namespace

void ExpectControls(HWND dialog, const std::vector<Expected>& expected) {
  const std::vector<HWND> children = ChildrenOf(dialog);
  ASSERT_EQ(children.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    const Expected& each = expected[i];
    SCOPED_TRACE(i);
    EXPECT_EQ(static_cast<short>(GetDlgCtrlID(children[i])), each.id);
    EXPECT_EQ(TextOf(children[i]), each.text);
    const RECT place = PlaceOf(children[i]);
    RECT expectedPlace = FromDialogUnits(dialog, each.x, each.y, each.width, each.height);
    if (each.width == 0) {
      expectedPlace.right = place.right;
      expectedPlace.bottom = place.bottom;
    }
    EXPECT_EQ(place, expectedPlace);
    const auto style = static_cast<DWORD>(GetWindowLongW(children[i], GWL_STYLE));
    EXPECT_EQ(style & ~kState, each.style) << std::hex << style;
  }
}

void ExpectFont(HWND dialog, const wchar_t* face, LONG weight) {
  LOGFONTW font = {};
  const auto handle = reinterpret_cast<HFONT>(SendMessageW(dialog, WM_GETFONT, 0, 0));
  ASSERT_NE(GetObjectW(handle, sizeof font, &font), 0);
  HDC screen = GetDC(nullptr);
  const int height = -MulDiv(9, GetDeviceCaps(screen, LOGPIXELSY), 72);
  ReleaseDC(nullptr, screen);
  EXPECT_STREQ(font.lfFaceName, face);
  EXPECT_EQ(font.lfHeight, height);
  EXPECT_EQ(font.lfWeight, weight);
}

}  // namespace ui_test
