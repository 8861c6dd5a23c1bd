// SPDX-License-Identifier: MIT
#include "platform/known_folders.h"

#include <gtest/gtest.h>

#include <string>

#ifdef _WIN32

#include <windows.h>
// shlobj.h needs windows.h before it.
#include <shlobj.h>

namespace {

bool userHasFolders = true;
int askedFolder = -1;
DWORD askedFlags = 77;

}  // namespace

// The linker puts this pointer in the place of the imported function's.
extern "C" decltype(&SHGetFolderPathW) __real___imp_SHGetFolderPathW;

static HRESULT WINAPI MayGetFolderPath(HWND owner, int folder, HANDLE token, DWORD flags,
                                       LPWSTR path) {
  askedFolder = folder;
  askedFlags = flags;
  if (!userHasFolders) return E_FAIL;
  return __real___imp_SHGetFolderPathW(owner, folder, token, flags, path);
}

extern "C" {
decltype(&SHGetFolderPathW) __wrap___imp_SHGetFolderPathW = MayGetFolderPath;
}

TEST(KnownFolders, AreTheUsers) {
  wchar_t expected[MAX_PATH] = {};
  ASSERT_NE(GetEnvironmentVariableW(L"LOCALAPPDATA", expected, MAX_PATH), 0u);
  std::wstring folder = L"before";
  ASSERT_TRUE(platform::LocalAppDataFolder(folder));
  EXPECT_EQ(folder, expected);
  EXPECT_EQ(askedFolder, CSIDL_LOCAL_APPDATA);
  EXPECT_EQ(askedFlags, static_cast<DWORD>(SHGFP_TYPE_CURRENT));
}

TEST(KnownFolders, MayBeMissing) {
  userHasFolders = false;
  std::wstring folder;
  EXPECT_FALSE(platform::LocalAppDataFolder(folder));
  userHasFolders = true;
}

#else

#include <cstdlib>

namespace {

// The environment that names the folders, restored after each test.
class KnownFolders : public testing::Test {
 protected:
  KnownFolders() : home(std::getenv("HOME") == nullptr ? "" : std::getenv("HOME")) {
    unsetenv("XDG_DATA_HOME");
  }
  ~KnownFolders() override {
    setenv("HOME", home.c_str(), 1);
    unsetenv("XDG_DATA_HOME");
  }

  const std::string home;
  std::wstring folder = L"before";
};

}  // namespace

TEST_F(KnownFolders, AreBelowTheHomeFolder) {
  setenv("HOME", "/home/ユーザー", 1);
  ASSERT_TRUE(platform::LocalAppDataFolder(folder));
  EXPECT_EQ(folder, L"/home/ユーザー/.local/share");
}

TEST_F(KnownFolders, MayBeElsewhere) {
  setenv("XDG_DATA_HOME", "/data/記録", 1);
  ASSERT_TRUE(platform::LocalAppDataFolder(folder));
  EXPECT_EQ(folder, L"/data/記録");
  setenv("HOME", "/home/user", 1);
  setenv("XDG_DATA_HOME", "", 1);
  ASSERT_TRUE(platform::LocalAppDataFolder(folder));
  EXPECT_EQ(folder, L"/home/user/.local/share");
}

TEST_F(KnownFolders, MayBeMissing) {
  setenv("HOME", "", 1);
  EXPECT_FALSE(platform::LocalAppDataFolder(folder));
  unsetenv("HOME");
  EXPECT_FALSE(platform::LocalAppDataFolder(folder));
}

// Not every sequence of bytes is a text.
TEST_F(KnownFolders, MustHaveANameThatIsAText) {
  setenv("HOME", "/home/\xFF\xFE", 1);
  EXPECT_FALSE(platform::LocalAppDataFolder(folder));
}

#endif
