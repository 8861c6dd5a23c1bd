// SPDX-License-Identifier: MIT
// The device log of the loaded library: switched in the registry, begun anew at every load.
#include <shlobj.h>

#include <future>

#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"

namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::MatchesRegex;
using testing::SizeIs;

constexpr const char* kKey = "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting";
constexpr const char* kValue = "DeviceLogWrite";

// The log's switch; off again, as in a fresh prefix, when the object goes.
class LogSwitch {
 public:
  ~LogSwitch() { RegDeleteTreeA(HKEY_CURRENT_USER, "SOFTWARE\\Halvorn"); }
  void Set(const std::string& text) {
    RegSetKeyValueA(HKEY_CURRENT_USER, kKey, kValue, REG_SZ, text.c_str(),
                    static_cast<DWORD>(text.size() + 1));
  }
};

std::filesystem::path LogFolder() {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return std::filesystem::path(folder) / L"Halvorn";
}

class DeviceLog : public testing::Test {
 protected:
  DeviceLog() { controller.LooksLikeAMount(); }
  ~DeviceLog() override { std::filesystem::remove_all(LogFolder()); }

  std::filesystem::path LogFile() { return LogFolder() / L"Ambrix" / L"3.0" / L"velquin.log"; }
  // The lines without the part that tells time and thread.
  std::vector<std::string> Lines() {
    std::string text = ReadWholeFile(LogFile()).value_or("no file");
    std::vector<std::string> lines;
    for (size_t end; (end = text.find("\r\n")) != std::string::npos; text.erase(0, end + 2)) {
      const std::string line = text.substr(0, end);
      EXPECT_THAT(
          line, MatchesRegex("20\\d\\d-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d.\\d\\d\\d:\\d+:\\w+:.*"));
      lines.push_back(line.substr(line.find(":INFO:") + 1));
    }
    EXPECT_EQ(text, "") << "a line without an end";
    return lines;
  }
  void RunSession(const DriverLibrary& driver) {
    ASSERT_EQ(driver.Start(nullptr, controller.Address().c_str(), nullptr, 0), 1);
    driver.End(nullptr);
  }

  void FailToStart(const DriverLibrary& driver) {
    auto start = std::async(std::launch::async, [&] {
      return driver.Start(nullptr, controller.Address().c_str(), nullptr, 0);
    });
    const auto box = WaitForMessageBox(std::chrono::seconds(10));
    ASSERT_TRUE(box);
    EXPECT_TRUE(PressOk(*box));
    EXPECT_EQ(start.get(), 0);
  }

  LogSwitch logSwitch;
  simulator::ScriptedController controller;
};

TEST_F(DeviceLog, TellsOfEveryOpeningAndClosing) {
  logSwitch.Set("On");
  {
    const DriverLibrary driver;
    EXPECT_THAT(Lines(), IsEmpty());
    RunSession(driver);
    EXPECT_THAT(Lines(), ElementsAre("INFO:Open:", "INFO:Close")) << "readable while it is open";
    RunSession(driver);
  }
  // The library closes once more as it goes.
  EXPECT_THAT(Lines(),
              ElementsAre("INFO:Open:", "INFO:Close", "INFO:Open:", "INFO:Close", "INFO:Close"));
}

// Whether nobody answers or the controller falls silent halfway, the attempt is closed.
TEST_F(DeviceLog, HasTwoLinesForAStartThatFails) {
  using simulator::Silence;
  logSwitch.Set("yes");
  const TempFolder journals;
  const DriverLibrary driver;
  driver.SetLogPath(nullptr, (journals.Narrow() + "\\").c_str());
  controller.IsSilentTo("$SYVER?");
  FailToStart(driver);
  EXPECT_THAT(Lines(), ElementsAre("INFO:Open:", "INFO:Close"));
  controller.AnswersInTurn("$SYVER?", {"$SYVER=1.00", "$SYVER=1.00", Silence()});
  FailToStart(driver);
  EXPECT_THAT(Lines(), ElementsAre("INFO:Open:", "INFO:Close", "INFO:Open:", "INFO:Close"));
  driver.End(nullptr);
  EXPECT_THAT(Lines(), SizeIs(4)) << "there is nothing left to close";
}

TEST_F(DeviceLog, HasTwoLinesForACheckThatFails) {
  logSwitch.Set("yes");
  const DriverLibrary driver;
  controller.IsSilentTo("$SYVER?");
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, nullptr, 0, nullptr, 0),
            0);
  EXPECT_THAT(Lines(), ElementsAre("INFO:Open:", "INFO:Close"));
}

TEST_F(DeviceLog, BeginsAnewAtEveryLoad) {
  logSwitch.Set("yes");
  {
    const DriverLibrary driver;
    RunSession(driver);
  }
  EXPECT_THAT(Lines(), ElementsAre("INFO:Open:", "INFO:Close", "INFO:Close"));
  {
    const DriverLibrary driver;
    EXPECT_THAT(Lines(), IsEmpty());
  }
  EXPECT_THAT(Lines(), ElementsAre("INFO:Close"));
}

TEST_F(DeviceLog, IsNotKeptUnlessSwitchedOn) {
  for (const char* text : {"", "no", "2", "off"}) {
    logSwitch.Set(text);
    const DriverLibrary driver;
    EXPECT_FALSE(std::filesystem::exists(LogFolder())) << text;
  }
}

TEST_F(DeviceLog, IsSwitchedAtLoadOnly) {
  const DriverLibrary driver;
  logSwitch.Set("1");
  RunSession(driver);
  EXPECT_FALSE(std::filesystem::exists(LogFolder()));
}

TEST_F(DeviceLog, IsDoneWithoutWhenItsFileCannotBeWritten) {
  logSwitch.Set("1");
  std::filesystem::create_directories(LogFile());  // a folder in the file's place
  const DriverLibrary driver;
  RunSession(driver);
  EXPECT_TRUE(controller.Saw("$SYVER?"));
}

}  // namespace
