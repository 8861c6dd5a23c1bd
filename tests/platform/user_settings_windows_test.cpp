// SPDX-License-Identifier: MIT
// Settings of the Windows registry: values of every type are read as bytes, and the key stays open.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "platform/user_settings.h"
#include "tests/platform/own_user_settings.h"
#include "tests/support/own_handles_win32.h"

namespace {

const char* const kKey = "SOFTWARE\\Velquin\\Test\\3.0";

class RegistrySettings : public testing::Test {
 protected:
  std::string Read() {
    char buffer[16] = {};
    if (!platform::ReadUserSetting(kKey, "Value", buffer, sizeof buffer)) return "nothing";
    return buffer;
  }

  OwnUserSettings user;
};

}  // namespace

TEST_F(RegistrySettings, AreReadWhateverTheirType) {
  user.SetText(kKey, "Value", "text");
  EXPECT_EQ(Read(), "text");
  user.SetBytes(kKey, "Value", REG_EXPAND_SZ, std::string("%PATH%\0", 7));
  EXPECT_EQ(Read(), "%PATH%");
  user.SetBytes(kKey, "Value", REG_BINARY, "bytes");
  EXPECT_EQ(Read(), "bytes");
  user.SetBytes(kKey, "Value", REG_DWORD, std::string("\1\0\0\0", 4));
  EXPECT_EQ(Read(), "\1");
  user.SetBytes(kKey, "Value", REG_DWORD, std::string("1\0\0\0", 4));
  EXPECT_EQ(Read(), "1");
}

TEST_F(RegistrySettings, AreNotThoseOfTheMachine) {
  EXPECT_FALSE(platform::ReadUserSetting("SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion",
                                         "ProgramFilesDir", nullptr, 0));
  EXPECT_EQ(Read(), "nothing");
}

// A host may wait for changes on the key, and closing it would end that.
TEST_F(RegistrySettings, KeepTheirKeyOpen) {
  user.SetText(kKey, "Value", "text");
  Read();
  const size_t before = OwnHandles().size();
  ASSERT_GT(before, 0u);
  EXPECT_EQ(Read(), "text");
  EXPECT_EQ(OwnHandles().size(), before + 1);
  char buffer[16];
  EXPECT_FALSE(platform::ReadUserSetting("SOFTWARE\\Velquin\\Missing", "Value", buffer, 16));
  EXPECT_EQ(OwnHandles().size(), before + 1) << "there is no key to keep open";
}
