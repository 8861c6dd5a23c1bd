// SPDX-License-Identifier: MIT
// The device log where it cannot be: a switch of the wrong kind, a folder that cannot be made, a
// full disk. The driver works as without a log.
#include <shlobj.h>

#include <filesystem>

#include "tests/library/bad_calls/full_device.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"

namespace {

constexpr std::chrono::seconds kSoon{10};  // a deadline, not a wait
constexpr int kSoonMs = 10'000;
constexpr const char* kKey = "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting";

class Log : public testing::Test {
 protected:
  Log() { controller.LooksLikeAMount(); }
  ~Log() override {
    RegDeleteTreeA(HKEY_CURRENT_USER, "SOFTWARE\\Halvorn");
    std::filesystem::remove_all(Root());
  }

  static std::filesystem::path Root() {
    wchar_t folder[MAX_PATH] = L"";
    SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
    return std::filesystem::path(folder) / L"Halvorn";
  }
  static std::filesystem::path Folder() { return Root() / L"Ambrix" / L"3.0"; }
  static bool IsThere() { return std::filesystem::exists(Folder() / L"velquin.log"); }

  static void Switch(DWORD type, const void* data, size_t size) {
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "DeviceLogWrite", type, data,
                    static_cast<DWORD>(size));
  }
  static void SwitchOn() { Switch(REG_SZ, "on", 3); }
  /// Loads the library and runs a session.
  void RunSession() {
    const DriverLibrary driver;
    ASSERT_EQ(driver.Start(nullptr, controller.Address().c_str(), nullptr, 0), 1);
    EXPECT_EQ(driver.End(nullptr), 1);
  }

  /// A session in which the mount is found and told where to go.
  void RunWholeSession(const DriverLibrary& driver) {
    constexpr double kTarget[2] = {83.633, 22.0145};
    controller.Clear();
    ASSERT_EQ(driver.Start(nullptr, controller.Address().c_str(), nullptr, 0), 1);
    double radec[2];
    EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon));
    EXPECT_EQ(driver.Look(nullptr, kTarget), 1);
    EXPECT_TRUE(controller.WaitFor("$MTTGT=", kSoonMs));
    EXPECT_EQ(driver.End(nullptr), 1);
  }
  static int CountOf(const std::string& text, const std::string& part) {
    int count = 0;
    for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
    return count;
  }

  simulator::ScriptedController controller;
};

TEST_F(Log, IsNotKeptForASwitchThatIsNoText) {
  const DWORD one = 1;
  const unsigned long long big = ~0ull;
  Switch(REG_DWORD, &one, sizeof one);
  RunSession();
  EXPECT_FALSE(IsThere());
  Switch(REG_QWORD, &big, sizeof big);
  RunSession();
  EXPECT_FALSE(IsThere());
  Switch(REG_NONE, nullptr, 0);
  RunSession();
  EXPECT_FALSE(IsThere());
}

TEST_F(Log, IsNotKeptForASwitchThatIsTooLong) {
  const std::string padded = "on" + std::string(9'998, ' ');
  Switch(REG_SZ, padded.c_str(), padded.size() + 1);
  RunSession();
  EXPECT_FALSE(IsThere());
  char sixteen[16] = "on";  // with its zeros as long as the driver's buffer
  Switch(REG_BINARY, sixteen, sizeof sixteen);
  RunSession();
  EXPECT_FALSE(IsThere());
}

// The type is not asked for: the bytes count.
TEST_F(Log, IsKeptForTheBytesOfAWordWhateverTheirType) {
  Switch(REG_BINARY, "on", 2);
  RunSession();
  EXPECT_TRUE(IsThere());
}

TEST_F(Log, IsDoneWithoutWhenItsFolderCannotBeMade) {
  SwitchOn();
  WriteWholeFile(Root(), "a file where the folder should be");
  RunSession();
  EXPECT_EQ(ReadWholeFile(Root()), "a file where the folder should be");
  std::filesystem::remove(Root());
  std::filesystem::create_directories(Folder().parent_path());
  WriteWholeFile(Folder(), "another one");
  RunSession();
  EXPECT_EQ(ReadWholeFile(Folder()), "another one");
}

TEST_F(Log, IsDoneWithoutOnAFullDisk) {
  SwitchOn();
  std::filesystem::create_directories(Folder());
  {
    const FullDevice disk(Folder(), {"velquin.log"});
    const int open = CountOpenDevices();
    for (int round = 0; round < 3; ++round) {
      const DriverLibrary driver;
      EXPECT_EQ(CountOpenDevices(), open + 1) << "the log was never begun";
      ASSERT_NO_FATAL_FAILURE(RunWholeSession(driver));
      ASSERT_NO_FATAL_FAILURE(RunWholeSession(driver));
    }
    EXPECT_EQ(CountOpenDevices(), open) << "the log stays open";
  }
  ASSERT_FALSE(IsThere());
  RunSession();
  const std::string text = ReadWholeFile(Folder() / L"velquin.log").value_or("");
  EXPECT_EQ(CountOf(text, ":INFO:Open:\r\n"), 1)
      << "with room again, and nothing of before: " << text;
  EXPECT_EQ(CountOf(text, ":INFO:Close\r\n"), 2) << text;
}

}  // namespace
