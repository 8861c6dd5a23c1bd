// SPDX-License-Identifier: MIT
// The message box on a system that cannot show Japanese: its buttons, and the driver's messages.
#include <gtest/gtest.h>

#include "res/string_ids.h"
#include "tests/library/ui/box_run.h"

namespace {

using namespace ui_test;

std::wstring Shown(const BoxRun& box) {
  std::wstring shown;
  for (const int button : {IDOK, IDCANCEL, 8}) {
    if (StyleOf(box.Window(), button) & WS_VISIBLE)
      shown += std::to_wstring(button) + L":" + TextOf(box.Window(), button) + L" ";
  }
  return shown;
}

TEST(EnglishMessageBox, EveryTypeShowsItsButtons) {
  const std::pair<UINT, const wchar_t*> cases[] = {
      {MB_OK, L"1:OK "},
      {MB_OKCANCEL, L"1:OK 2:Cancel "},
      {MB_YESNOCANCEL, L"1:&Yes 2:&No 8:Cancel "},
      {MB_YESNO, L"1:&Yes 2:&No "},
      {MB_ABORTRETRYIGNORE, L"1:OK 2:Cancel 8: "},
  };
  for (const auto& [type, shown] : cases) {
    const BoxRun box("text", type);
    ASSERT_NE(box.Window(), nullptr);
    EXPECT_EQ(Shown(box), shown) << type;
  }
}

TEST(EnglishMessageBox, ItsAccessKeysAnswer) {
  for (const auto& [key, answer] : {std::pair{'Y', IDYES}, {'N', IDNO}}) {
    BoxRun box("text", MB_YESNOCANCEL);
    ASSERT_NE(box.Window(), nullptr);
    EXPECT_EQ(box.PressKeyInFocus(key), answer) << key;
  }
}

// Nothing is broken that the texts do not break themselves.
TEST(EnglishMessageBox, ShowsTheDriversMessagesAsTheyAre) {
  const std::pair<UINT, const wchar_t*> cases[] = {
      {kTextSocketsFailed, L"Windows Sockets could not be started.\n"},
      {kTextNoResponse,
       L"The telescope does not answer.\nCheck the port settings, the cables and the power.\n"},
      {kTextBelowHorizon, L"The object is below the horizon.\n"},
      {kTextCommandRefused,
       L"The command was not accepted.\nIf a goto is under way, try again when it is done.\n"},
      {kTextSyncQuestion, L"The mount will be synchronised on the target.\n"},
  };
  for (const auto& [id, text] : cases) {
    CString loaded;
    ASSERT_TRUE(loaded.LoadString(id));
    const BoxRun box(loaded.GetString(), MB_OK);
    ASSERT_NE(box.Window(), nullptr);
    EXPECT_EQ(TextOf(box.Window(), 10001), text);
  }
}

}  // namespace
