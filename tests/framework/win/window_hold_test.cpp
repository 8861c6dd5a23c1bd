// SPDX-License-Identifier: MIT
// Who may delete a counted dialog: its window's hold and its caller's are each released once, also
// where a thread gives the window up that another one is just destroying.
#include <gtest/gtest.h>

#include <functional>
#include <future>

#include "framework/win/dialog.h"
#include "res/resource_ids.h"
#include "tests/library/ui/ui_thread.h"

namespace {

class CountedDialog : public CDialog {
 public:
  CountedDialog() : CDialog(IDD_DETAIL) {
    ++alive;
    HoldByCaller();
  }
  ~CountedDialog() override { --alive; }

  static int alive;
  std::function<void()> whenGone = [] {};

 protected:
  void PostNcDestroy() override { whenGone(); }
};

int CountedDialog::alive = 0;

class WindowHold : public testing::Test {
 protected:
  void SetUp() override { CountedDialog::alive = 0; }

  CountedDialog* Open() const {
    CountedDialog* dialog = nullptr;
    host.Do([&] {
      dialog = new CountedDialog;
      EXPECT_TRUE(dialog->Create(IDD_DETAIL, nullptr));
    });
    return dialog;
  }

  const UiThread host;
};

TEST_F(WindowHold, TheObjectGoesWithTheWindowWhenTheCallerLeftFirst) {
  CountedDialog* dialog = Open();
  HWND window = dialog->m_hWnd;
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 1);
  host.Do([&] { DestroyWindow(window); });
  EXPECT_EQ(CountedDialog::alive, 0);
}

TEST_F(WindowHold, TheObjectGoesWithTheCallerWhenTheWindowWentFirst) {
  CountedDialog* dialog = Open();
  host.Do([&] { dialog->DestroyWindow(); });
  EXPECT_EQ(CountedDialog::alive, 1);
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 0);
}

TEST_F(WindowHold, ClosingAWindowThatHasGoneLeavesTheObjectToTheCaller) {
  CountedDialog* dialog = Open();
  host.Do([&] { dialog->DestroyWindow(); });
  dialog->CloseFromAnyThread();
  host.Do([&] { dialog->CloseFromAnyThread(); });
  EXPECT_EQ(CountedDialog::alive, 1);
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 0);
}

TEST_F(WindowHold, AWindowIsGivenUpOnce) {
  CountedDialog* other = Open();
  CountedDialog* dialog = Open();
  HWND window = dialog->m_hWnd;
  EXPECT_TRUE(dialog->GiveUpWindow());
  EXPECT_FALSE(dialog->GiveUpWindow());
  EXPECT_EQ(CountedDialog::alive, 2);
  EXPECT_EQ(CWnd::FromHandlePermanent(window), nullptr);
  // Without a window of its own it must not take hold of other people's.
  EXPECT_EQ(CWnd::FromHandlePermanent(other->m_hWnd), other);
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 1);
  host.Do([&] {
    DestroyWindow(window);
    other->DestroyWindow();
  });
  other->Release();
  EXPECT_EQ(CountedDialog::alive, 0);
}

// The window's thread is in the middle of destroying it.
TEST_F(WindowHold, AWindowThatIsJustGoingIsNotGivenUp) {
  CountedDialog* dialog = Open();
  bool givenUp = true;
  dialog->whenGone = [&] {
    givenUp = std::async(std::launch::async, [&] { return dialog->GiveUpWindow(); }).get();
    dialog->CloseFromAnyThread();
  };
  host.Do([&] { dialog->DestroyWindow(); });
  EXPECT_FALSE(givenUp);
  EXPECT_EQ(CountedDialog::alive, 1);
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 0);
}

TEST_F(WindowHold, AWindowThatWasLostWithItsThreadIsReleasedOnce) {
  CountedDialog* dialog = nullptr;
  {
    const UiThread brief;
    brief.Do([&] {
      dialog = new CountedDialog;
      EXPECT_TRUE(dialog->Create(IDD_DETAIL, nullptr));
    });
  }
  dialog->CloseFromAnyThread();
  dialog->CloseFromAnyThread();
  EXPECT_EQ(CountedDialog::alive, 1);
  dialog->Release();
  EXPECT_EQ(CountedDialog::alive, 0);
}

}  // namespace
