// SPDX-License-Identifier: MIT
#include "library/api/velquin_app.h"

#include <gmock/gmock.h>

#include <future>
#include <string>
#include <vector>

#include "framework/base/cstring.h"
#include "framework/base/message_box.h"
#include "framework/base/module_state.h"
#include "library/ui/shared_brushes.h"
#include "res/string_ids.h"
#include "tests/library/api/system_wraps.h"
#include "tests/library/dll/message_boxes.h"

// windows.h, which message_boxes.h needs, makes another name of it.
#undef LoadString

namespace {

using namespace std::chrono_literals;
using system_wraps::NoSockets;
using system_wraps::SocketUsers;
using testing::ElementsAre;
using testing::IsEmpty;

// Keeps the messages instead of showing them.
class QuietApp : public CVelquinApp {
 public:
  int DoMessageBox(LPCSTR prompt, UINT type, UINT) override {
    texts.push_back(prompt);
    types.push_back(type);
    return IDOK;
  }

  std::vector<std::string> texts;
  std::vector<UINT> types;
};

class App : public testing::Test {
 protected:
  // The module's own object is the current one again afterwards.
  ~App() override { AfxGetStaticModuleState()->m_pCurrentWinApp = before; }

  static COLORREF ColourOf(const CBrush* brush) {
    LOGBRUSH description = {};
    GetObjectA(brush->GetSafeHandle(), sizeof description, &description);
    return description.lbColor;
  }

  CWinApp* const before = AfxGetApp();
};

TEST_F(App, StartsTheSocketsAndMakesTheBrushes) {
  QuietApp app;
  const int usersBefore = SocketUsers();
  EXPECT_EQ(app.InitInstance(), TRUE);
  EXPECT_EQ(SocketUsers(), usersBefore + 1);
  ASSERT_NE(GetSharedBrushes().dark, nullptr);
  ASSERT_NE(GetSharedBrushes().black, nullptr);
  EXPECT_EQ(ColourOf(GetSharedBrushes().dark), RGB(0x22, 0x22, 0x22));
  EXPECT_EQ(ColourOf(GetSharedBrushes().black), RGB(0, 0, 0));
  EXPECT_THAT(app.texts, IsEmpty());
  app.ExitInstance();
}

TEST_F(App, GivesSocketsAndBrushesBack) {
  QuietApp app;
  const int usersBefore = SocketUsers();
  app.InitInstance();
  EXPECT_EQ(app.ExitInstance(), 0);
  EXPECT_EQ(SocketUsers(), usersBefore);
  EXPECT_EQ(GetSharedBrushes().dark, nullptr);
  EXPECT_EQ(GetSharedBrushes().black, nullptr);
}

TEST_F(App, GivesTheBrushesBackBeforeTheFrameworkExits) {
  QuietApp app;
  app.InitInstance();
  const HBRUSH dark = static_cast<HBRUSH>(GetSharedBrushes().dark->GetSafeHandle());
  const HBRUSH black = static_cast<HBRUSH>(GetSharedBrushes().black->GetSafeHandle());
  const int usersBefore = SocketUsers();
  app.ExitInstance();
  ASSERT_EQ(SocketUsers(), usersBefore - 1) << "the framework has not exited";
  EXPECT_FALSE(system_wraps::HadBrushesAtLastStop());
  LOGBRUSH description = {};
  EXPECT_EQ(GetObjectA(dark, sizeof description, &description), 0);
  EXPECT_EQ(GetObjectA(black, sizeof description, &description), 0);
}

TEST_F(App, SaysSoAndRefusesToStartWithoutSockets) {
  QuietApp app;
  const int usersBefore = SocketUsers();
  {
    const NoSockets broken;
    EXPECT_EQ(app.InitInstance(), FALSE);
  }
  CString expected;
  ASSERT_TRUE(expected.LoadString(kTextSocketsFailed));
  EXPECT_THAT(app.texts, ElementsAre(expected.GetString()));
  EXPECT_THAT(app.types, ElementsAre(0u));
  EXPECT_EQ(app.ExitInstance(), 0);
  EXPECT_EQ(SocketUsers(), usersBefore) << "what was not started is not stopped";
}

TEST_F(App, HasItsNameFromTheStringTable) {
  QuietApp app;
  EXPECT_STREQ(app.AppName(), "");
  app.SetCurrentHandles();
  EXPECT_STREQ(app.AppName(), "VELQUIN");
}

TEST_F(App, ShowsEveryMessageInTheLibrarysOwnBox) {
  CVelquinApp app;
  app.SetCurrentHandles();
  ASSERT_TRUE(app.InitInstance());
  const struct {
    UINT type;
    std::vector<std::wstring> buttons;
    int answer;
  } cases[] = {
      {MB_OK, {L"OK"}, IDOK},
      {MB_OKCANCEL, {L"OK", L"キャンセル"}, IDOK},
      {MB_YESNO, {L"はい(&Y)", L"いいえ(&N)"}, IDYES},
  };
  for (const auto& each : cases) {
    auto answer =
        std::async(std::launch::async, [&] { return AfxMessageBox(kTextSyncQuestion, each.type); });
    const auto box = WaitForMessageBox(10s);
    ASSERT_TRUE(box) << each.type;
    EXPECT_EQ(box->title, L"VELQUIN");
    EXPECT_EQ(box->text, L"同期します。");
    EXPECT_EQ(box->buttons, each.buttons);
    EXPECT_TRUE(PressOk(*box));
    EXPECT_EQ(answer.get(), each.answer);
  }
  app.ExitInstance();
}

}  // namespace
