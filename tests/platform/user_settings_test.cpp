// SPDX-License-Identifier: MIT
#include "platform/user_settings.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

#include "tests/platform/own_user_settings.h"

namespace {

constexpr unsigned kBinary = 3;  // REG_BINARY
const char* const kKey = "SOFTWARE\\Velquin\\Test\\3.0";

class UserSettings : public testing::Test {
 protected:
  UserSettings() { std::memset(buffer, '#', sizeof buffer); }

  bool Read(size_t size) { return platform::ReadUserSetting(kKey, "Value", buffer, size); }
  std::string Bytes(size_t count) { return {buffer, count}; }

  OwnUserSettings user;
  char buffer[32];
};

}  // namespace

TEST_F(UserSettings, GivesTheBytesOfAValueAndLeavesTheRestOfTheBuffer) {
  user.SetBytes(kKey, "Value", kBinary, std::string("a\0b\xFF", 4));
  ASSERT_TRUE(Read(16));
  EXPECT_EQ(Bytes(8), std::string("a\0b\xFF####", 8));
}

TEST_F(UserSettings, GivesATextThatFits) {
  user.SetText(kKey, "Value", "true");
  ASSERT_TRUE(Read(16));
  EXPECT_EQ(Bytes(4), "true");
}

TEST_F(UserSettings, GivesAnEmptyValue) {
  user.SetBytes(kKey, "Value", kBinary, "");
  ASSERT_TRUE(Read(16));
  EXPECT_EQ(Bytes(4), "####");
}

TEST_F(UserSettings, GivesAValueThatJustFits) {
  user.SetBytes(kKey, "Value", kBinary, "0123456789abcdef");
  ASSERT_TRUE(Read(16));
  EXPECT_EQ(Bytes(17), "0123456789abcdef#");
}

TEST_F(UserSettings, RefusesAValueThatDoesNotFit) {
  user.SetBytes(kKey, "Value", kBinary, "0123456789abcdef");
  EXPECT_FALSE(Read(15));
  EXPECT_EQ(buffer[15], '#') << "it wrote beyond the buffer";
}

TEST_F(UserSettings, HasNothingUnderAMissingKeyOrValue) {
  EXPECT_FALSE(Read(16));
  user.SetText(kKey, "Other", "true");
  EXPECT_FALSE(Read(16));
  EXPECT_FALSE(platform::ReadUserSetting("SOFTWARE\\Velquin\\Test", "Other", buffer, 16));
  EXPECT_EQ(Bytes(32), std::string(32, '#'));
}

#ifndef _WIN32

#include <cstdlib>
#include <filesystem>

#include "tests/support/file_text.h"

TEST(UserSettingsFolder, IsDotConfigInTheHomeFolderWhenNotNamed) {
  const TempFolder home;
  const std::string before = std::getenv("HOME") == nullptr ? "" : std::getenv("HOME");
  unsetenv("XDG_CONFIG_HOME");
  setenv("HOME", home.Narrow().c_str(), 1);
  std::filesystem::create_directories(home / ".config/A/B");
  WriteWholeFile(home / ".config/A/B/Value", "on");
  char buffer[16] = {};
  EXPECT_TRUE(platform::ReadUserSetting("A\\B", "Value", buffer, sizeof buffer));
  EXPECT_STREQ(buffer, "on");
  unsetenv("HOME");
  EXPECT_FALSE(platform::ReadUserSetting("A\\B", "Missing", buffer, sizeof buffer));
  setenv("HOME", before.c_str(), 1);
}

#endif
