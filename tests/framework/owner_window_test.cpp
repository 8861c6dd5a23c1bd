// SPDX-License-Identifier: MIT
#include "framework/base/owner_window.h"

#include <gtest/gtest.h>

TEST(OwnerWindow, HoldsAHandleThatIsNotItsOwn) {
  int windows[2];
  HWND first = reinterpret_cast<HWND>(&windows[0]);
  HWND second = reinterpret_cast<HWND>(&windows[1]);
  COwnerWindow owner;
  EXPECT_EQ(owner.m_hWnd, nullptr);
  owner.Attach(first);
  EXPECT_EQ(owner.m_hWnd, first);
  owner.Attach(second);
  EXPECT_EQ(owner.Detach(), second);
  EXPECT_EQ(owner.m_hWnd, nullptr);
  EXPECT_EQ(owner.Detach(), nullptr);
}
