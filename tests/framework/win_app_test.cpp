// SPDX-License-Identifier: MIT
#include "framework/base/win_app.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <memory>
#include <string>
#include <thread>

#include "framework/base/message_box.h"
#include "tests/framework/fake_platform.h"

/// What of an application object is for the holder of a private lock.
class WinAppProbe {
 public:
  /// Gives it the end of its own name, by a pointer into that.
  static void DropFromName(CWinApp& app, size_t count) {
    const CSingleLock guard(app.m_nameLock);
    app.SetAppName(app.m_pszAppName + count);
  }
};

namespace {

constexpr UINT kIconError = 0x10;
constexpr UINT kIconQuestion = 0x20;
constexpr UINT kIconExclamation = 0x30;
constexpr UINT kIconInformation = 0x40;

class WinApp : public testing::Test {
 protected:
  FakePlatform system;
};

}  // namespace

TEST_F(WinApp, IsKnownWhileItLives) {
  EXPECT_EQ(AfxGetApp(), nullptr);
  {
    const CWinApp app;
    EXPECT_EQ(AfxGetApp(), &app);
  }
  EXPECT_EQ(AfxGetApp(), nullptr);
}

TEST_F(WinApp, DoesNotTakeItsSuccessorWithIt) {
  auto first = std::make_unique<CWinApp>();
  const CWinApp second;
  EXPECT_EQ(AfxGetApp(), &second);
  first.reset();
  EXPECT_EQ(AfxGetApp(), &second);
}

TEST_F(WinApp, TakesItsNameFromTheStringTable) {
  CWinApp app;
  EXPECT_STREQ(app.AppName(), "");
  app.SetCurrentHandles();
  EXPECT_STREQ(app.AppName(), "VELQUIN");
}

TEST_F(WinApp, KeepsANameItWasGiven) {
  CWinApp app("Own name");
  app.SetCurrentHandles();
  EXPECT_STREQ(app.AppName(), "Own name");
}

TEST_F(WinApp, CopiesItsName) {
  char name[] = "first";
  CWinApp app(name);
  std::strcpy(name, "other");
  EXPECT_STREQ(app.AppName(), "first");
  app.SetAppName(name);
  std::strcpy(name, "third");
  EXPECT_STREQ(app.AppName(), "other");
  WinAppProbe::DropFromName(app, 2);
  EXPECT_STREQ(app.AppName(), "her");
}

// A session starts under a new name while a message of another thread asks for its title.
TEST_F(WinApp, GivesAWholeNameWhileAnotherThreadReplacesIt) {
  // Long ones, so that a name is often replaced while it is being copied.
  const std::string names[] = {std::string(1'000'000, 'a'), std::string(1'000'000, 'b')};
  CWinApp app(names[0].c_str());
  std::atomic<bool> stop = false;
  std::thread renaming([&] {
    for (size_t i = 0; !stop; ++i) app.SetAppName(names[i % 2].c_str());
  });
  int torn = 0;
  for (int i = 0; i < 100; ++i) {
    const CString name = app.AppName();
    torn += names[0] != name.GetString() && names[1] != name.GetString() ? 1 : 0;
  }
  stop = true;
  renaming.join();
  EXPECT_EQ(torn, 0);
}

TEST_F(WinApp, HasAnEmptyNameBeforeItHasAny) {
  EXPECT_STREQ(CWinApp().AppName(), "");
}

TEST_F(WinApp, ShowsMessagesUnderItsName) {
  CWinApp app("Title");
  system.pressedButton = 7;
  EXPECT_EQ(app.DoMessageBox("a text", MB_OKCANCEL | kIconQuestion, 0), 7);
  ASSERT_EQ(system.boxes.size(), 1u);
  EXPECT_EQ(system.boxes[0].text, "a text");
  EXPECT_EQ(system.boxes[0].title, "Title");
  EXPECT_EQ(system.boxes[0].type, MB_OKCANCEL | kIconQuestion);
}

TEST_F(WinApp, ShowsMessagesWithoutATitleWhenItHasNoName) {
  CWinApp app;
  app.DoMessageBox("a text", MB_OK, 0);
  ASSERT_EQ(system.boxes.size(), 1u);
  EXPECT_EQ(system.boxes[0].title, "");
}

TEST_F(WinApp, AddsTheExclamationMarkWhereNoIconIsAskedFor) {
  CWinApp app;
  app.DoMessageBox("", MB_OK, 0);
  app.DoMessageBox("", MB_OKCANCEL, 0);
  app.DoMessageBox("", kIconError, 0);
  app.DoMessageBox("", kIconInformation, 0);
  ASSERT_EQ(system.boxes.size(), 4u);
  EXPECT_EQ(system.boxes[0].type, kIconExclamation);
  EXPECT_EQ(system.boxes[1].type, MB_OKCANCEL | kIconExclamation);
  EXPECT_EQ(system.boxes[2].type, kIconError);
  EXPECT_EQ(system.boxes[3].type, kIconInformation);
}

TEST_F(WinApp, StartsAndEndsWithoutDoingAnything) {
  CWinApp app;
  EXPECT_TRUE(app.InitInstance());
  EXPECT_EQ(app.ExitInstance(), 0);
  EXPECT_EQ(system.socketStops, 0);
}

TEST_F(WinApp, GivesBackTheSocketsItStarted) {
  CWinApp app;
  EXPECT_TRUE(AfxSocketInit());
  EXPECT_THAT(system.startedVersions, testing::ElementsAre(0x0202));
  EXPECT_EQ(system.socketStops, 0);
  EXPECT_EQ(app.ExitInstance(), 0);
  EXPECT_EQ(system.socketStops, 1);
  EXPECT_EQ(app.ExitInstance(), 0);
  EXPECT_EQ(system.socketStops, 1);
}

TEST_F(WinApp, GivesNoSocketsBackThatCouldNotBeStarted) {
  CWinApp app;
  system.socketStartResult = 10091;
  EXPECT_FALSE(AfxSocketInit());
  app.ExitInstance();
  EXPECT_EQ(system.socketStops, 0);
}

TEST_F(WinApp, IsNotNeededForSockets) {
  EXPECT_TRUE(AfxSocketInit());
  EXPECT_EQ(system.startedVersions.size(), 1u);
}
