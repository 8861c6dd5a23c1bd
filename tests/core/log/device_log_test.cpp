// SPDX-License-Identifier: MIT
#include "core/log/device_log.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

#include "tests/core/log/local_data.h"
#include "tests/platform/own_user_settings.h"
#include "tests/support/file_text.h"

namespace {

using logging::orlin::IsDeviceLogOn;
using logging::orlin::OpenDeviceLog;

constexpr unsigned kBinary = 3;  // REG_BINARY
constexpr unsigned kDword = 4;   // REG_DWORD
const char* const kKey = "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting";
const char* const kFile = "Halvorn/Ambrix/3.0/velquin.log";

class DeviceLog : public testing::Test {
 protected:
  bool IsOnWith(const std::string& text) {
    user.SetText(kKey, "DeviceLogWrite", text);
    return IsDeviceLogOn();
  }
  bool IsOnWithBytes(unsigned type, const std::string& bytes) {
    user.SetBytes(kKey, "DeviceLogWrite", type, bytes);
    return IsDeviceLogOn();
  }
  void SwitchOn() { user.SetText(kKey, "DeviceLogWrite", "yes"); }

  OwnUserSettings user;
  LocalData local;
};

}  // namespace

TEST_F(DeviceLog, IsSwitchedOnByFourWordsInAnyCase) {
  for (const char* word : {"yes", "true", "on", "1", "YES", "Yes", "TRUE", "tRuE", "On", "ON"}) {
    EXPECT_TRUE(IsOnWith(word)) << word;
  }
}

TEST_F(DeviceLog, IsOffWithAnyOtherText) {
  for (const char* word : {"", "2", "no", "0", "off", "false", "y", "o", "tru", "truee", "11", "01",
                           "1 ", " 1", "yes,on", "+1", "yesyesyesyesyesyesyes"}) {
    EXPECT_FALSE(IsOnWith(word)) << '"' << word << '"';
  }
}

TEST_F(DeviceLog, IsOffWithoutTheSetting) {
  EXPECT_FALSE(IsDeviceLogOn());
  user.SetText(kKey, "DeviceLogRead", "yes");
  user.SetText("SOFTWARE\\Halvorn\\Pelloran\\3.1\\Setting", "DeviceLogWrite", "yes");
  EXPECT_FALSE(IsDeviceLogOn());
}

// A text counts up to its NUL, and nobody asks of which type the value is.
TEST_F(DeviceLog, TakesTheBytesForAText) {
  EXPECT_TRUE(IsOnWithBytes(kBinary, "true"));
  EXPECT_TRUE(IsOnWithBytes(kBinary, std::string("on\0ff", 5)));
  EXPECT_FALSE(IsOnWithBytes(kDword, std::string("\1\0\0\0", 4))) << "the number 1";
  EXPECT_TRUE(IsOnWithBytes(kDword, std::string("1\0\0\0", 4))) << "the digit 1";
}

TEST_F(DeviceLog, IsOffWithAValueOf16BytesOrMore) {
  std::string value("true");
  value.resize(15, '\0');
  EXPECT_TRUE(IsOnWithBytes(kBinary, value));
  value.resize(16, '\0');
  EXPECT_FALSE(IsOnWithBytes(kBinary, value));
  value.resize(17, '\0');
  EXPECT_FALSE(IsOnWithBytes(kBinary, value));
}

TEST_F(DeviceLog, IsWrittenIntoANewFolder) {
  SwitchOn();
  auto log = OpenDeviceLog();
  ASSERT_NE(log, nullptr);
  EXPECT_EQ(ReadWholeFile(local.folder / kFile), "");
  log->Log("INFO", "Open:");
  EXPECT_TRUE(ReadWholeFile(local.folder / kFile)->find(":INFO:Open:") != std::string::npos);
}

TEST_F(DeviceLog, IsNotOpenedWhenOff) {
  user.SetText(kKey, "DeviceLogWrite", "no");
  EXPECT_EQ(OpenDeviceLog(), nullptr);
  EXPECT_FALSE(std::filesystem::exists(local.folder / "Halvorn"));
}

TEST_F(DeviceLog, BeginsAnewAtEachOpen) {
  SwitchOn();
  OpenDeviceLog()->Log("INFO", "first");
  auto log = OpenDeviceLog();
  ASSERT_NE(log, nullptr);
  EXPECT_EQ(ReadWholeFile(local.folder / kFile), "");
}

TEST_F(DeviceLog, IsOffWhenAFileIsInTheWayOfItsFolder) {
  SwitchOn();
  std::filesystem::create_directories(local.folder / "Halvorn/Ambrix");
  WriteWholeFile(local.folder / "Halvorn/Ambrix/3.0", "a file in the way");
  EXPECT_EQ(OpenDeviceLog(), nullptr);
  EXPECT_EQ(ReadWholeFile(local.folder / "Halvorn/Ambrix/3.0"), "a file in the way");
}

TEST_F(DeviceLog, IsOffWhenItsFileCannotBeOpened) {
  SwitchOn();
  std::filesystem::create_directories(local.folder / kFile);
  EXPECT_EQ(OpenDeviceLog(), nullptr);
}

TEST_F(DeviceLog, IsOffWhenItsFolderCannotBeMadeOrIsUnknown) {
  SwitchOn();
  local.takesFolders = false;
  EXPECT_EQ(OpenDeviceLog(), nullptr);
  local.takesFolders = true;
  local.known = false;
  EXPECT_EQ(OpenDeviceLog(), nullptr);
  local.known = true;
  EXPECT_NE(OpenDeviceLog(), nullptr);
}
