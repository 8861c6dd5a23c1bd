// SPDX-License-Identifier: MIT
// Windows that are opened and closed leave nothing behind: no drawing object, no window.
#include <gtest/gtest.h>

#include <cstdio>
#include <functional>

#include "library/ui/dlg_detail.h"
#include "library/ui/orl_message_box.h"
#include "tests/library/ui/gdi_objects.h"
#include "tests/library/ui/open_controller.h"
#include "tests/support/run_length.h"

namespace {

using namespace ui_test;

// Opens windows one after the other on one thread, without waiting for anybody.
class LeakTest : public testing::Test {
 protected:
  static constexpr int kRounds = 100;
  static constexpr int kManyRounds = 1200;
  static constexpr int kRoundsPastTheLimit = 12000;  // the system has 10,000 objects a process

  void SetUp() override {
    App();
    engine.SetControllerWindowFactory(&CControllerWindow::Open);
  }

  /// @return objects that came with the rounds; the first few make what is kept for later.
  int Left(int rounds, const std::function<void()>& round) const {
    int before = 0;
    int after = 0;
    host.Do([&] {
      for (int i = 0; i < 5; ++i) round();
      before = CountGdiObjects();
      for (int i = 0; i < rounds; ++i) round();
      after = CountGdiObjects();
    });
    EXPECT_TRUE(OpenDialogs().empty());
    return after - before;
  }

  // A modal dialog that closes itself when its queue is empty, after it has been painted.
  template <typename Dialog, typename... Arguments>
  static void RunModal(Arguments... arguments) {
    struct Closing : Dialog {
      using Dialog::Dialog;
      BOOL OnInitDialog() override {
        const BOOL result = Dialog::OnInitDialog();
        ::ShowWindow(this->m_hWnd, SW_SHOW);
        ::UpdateWindow(this->m_hWnd);
        this->PostMessage(WM_COMMAND, IDCANCEL);
        return result;
      }
    };
    Closing dialog(arguments...);
    dialog.DoModal();
  }

  void OpenAndCloseController() {
    engine.ShowController(true);
    ::UpdateWindow(FindDialogWith(3010));
    engine.ShowController(false);
  }

  CTelescope engine;
  const UiThread host;
};

TEST_F(LeakTest, TheCounterSeesAnObject) {
  host.Do([] {});
  host.Do([] {
    const int before = CountGdiObjects();
    HBRUSH brush = CreateSolidBrush(RGB(1, 2, 3));
    EXPECT_EQ(CountGdiObjects(), before + 1);
    DeleteObject(brush);
    EXPECT_EQ(CountGdiObjects(), before);
  });
}

TEST_F(LeakTest, AHundredHandControllersLeaveNothing) {
  EXPECT_EQ(Left(kRounds, [&] { OpenAndCloseController(); }), 0);
}

TEST_F(LeakTest, AHundredReplacedHandControllersLeaveNothing) {
  EXPECT_EQ(Left(kRounds,
                 [&] {
                   engine.ShowController(true);
                   OpenAndCloseController();
                 }),
            0);
}

TEST_F(LeakTest, AHundredDetailWindowsLeaveNothing) {
  EXPECT_EQ(Left(kRounds, [] { RunModal<CDlgDetail>(HWND{}); }), 0);
}

TEST_F(LeakTest, AHundredMessageBoxesLeaveNothing) {
  EXPECT_EQ(
      Left(kRounds, [] { RunModal<COrlMessageBox>(HWND{}, "one\ntwo", UINT{MB_YESNOCANCEL}); }), 0);
}

TEST_F(LeakTest, ManyMessageBoxesLeaveNothing) {
  const int rounds = IsFullLength() ? kRoundsPastTheLimit : kManyRounds;
  EXPECT_EQ(Left(rounds, [] { RunModal<COrlMessageBox>(HWND{}, "text", UINT{MB_OK}); }), 0);
  std::printf("  %d message boxes\n", rounds);
}

}  // namespace
