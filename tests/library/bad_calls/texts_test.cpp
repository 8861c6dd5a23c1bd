// SPDX-License-Identifier: MIT
// Texts that are empty, ten thousand characters long, or half a character, and paths that lead
// nowhere.
#include <windows.h>

#include <algorithm>
#include <filesystem>

#include "tests/library/bad_calls/box_answerer.h"
#include "tests/library/bad_calls/guarded_memory.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/library/endurance/process_figures.h"
#include "tests/support/window_messages.h"

namespace {

using namespace std::chrono_literals;
using testing::Contains;
using testing::StartsWith;

const std::string kScope = "scope";
const std::string kLong(10'000, 'x');
// The first byte of a character of two, and nothing after it.
const std::string kHalf = "\x83\x65\x83";
const std::vector<std::string> kTexts = {"", kLong, kHalf, "%s%n%d", "\n\r\t", "\x01\x7F\xFF"};

/// The process's current folder for as long as the object lives.
class CurrentFolder {
 public:
  explicit CurrentFolder(const std::filesystem::path& path)
      : before(std::filesystem::current_path()) {
    std::filesystem::current_path(path);
  }
  ~CurrentFolder() { std::filesystem::current_path(before); }

 private:
  const std::filesystem::path before;
};

class Texts : public DriverTest {
 protected:
  int32_t StartAt(const std::string& address) {
    return driver.Start(nullptr, address.c_str(), nullptr, 0);
  }
  int32_t CheckAt(const std::string& address) {
    char version[16];
    return driver.Check(nullptr, address.c_str(), nullptr, version, sizeof version, nullptr, 0);
  }
  /// A failure that the journal has to tell of.
  void LoseAReply() {
    controller.AnswersOnce("$MTSTA?", simulator::ScriptedReply("$SYVER=1.00"));
    ASSERT_TRUE(PollsAgain());
  }
  int Journals() const {
    const std::filesystem::directory_iterator files(folder.Path());
    return static_cast<int>(std::distance(begin(files), end(files)));
  }
  std::vector<std::wstring> JournalNames() const {
    std::vector<std::wstring> names;
    for (const auto& file : std::filesystem::directory_iterator(folder.Path())) {
      names.push_back(TempFolder::WidePath(file.path().filename()));
    }
    return names;
  }
};

TEST_F(Texts, OfAnyKindAreNoAddress) {
  const BoxAnswerer user;
  int starts = 0;
  for (const std::string& text : kTexts) {
    if (text.empty()) continue;  // it means this machine, which may answer
    EXPECT_EQ(CheckAt(text), 0) << text.substr(0, 10);
    EXPECT_EQ(StartAt(text), 0) << text.substr(0, 10);
    ++starts;
    EXPECT_TRUE(Eventually([&] { return user.Answered() == starts; }, kSoon));
  }
  EXPECT_EQ(CheckAt("127.0.0.1.1"), 0);
  EXPECT_EQ(CheckAt("no-such-host.invalid"), 0);
  StartSession();
}

// The link never gives back the socket that it opened before it asked for the name.
TEST_F(Texts, ThatNameNoHostCostASocketEach) {
  CheckAt("no-such-host.invalid");
  const int sockets = ReadProcessFigures().sockets;
  for (int i = 0; i < 5; ++i) CheckAt("no-such-host.invalid");
  EXPECT_EQ(ReadProcessFigures().sockets, sockets + 5);
}

TEST_F(Texts, OfAnyKindMayBeTheTitleOfABox) {
  controller.IsSilentTo("$SYVER?");
  const BoxAnswerer user;
  int starts = 0;
  for (const std::string& text : kTexts) {
    EXPECT_EQ(driver.SetName(nullptr, text.c_str()), 1);
    EXPECT_EQ(Start(), 0);
    ++starts;
    EXPECT_TRUE(Eventually([&] { return user.Answered() == starts; }, kSoon)) << starts;
  }
}

TEST_F(Texts, OfAnyKindMayBeOnTheHandController) {
  StartSession();
  for (const std::string& text : kTexts) {
    EXPECT_EQ(driver.SetName(nullptr, text.c_str()), 1);
    EXPECT_EQ(driver.SetVendor(nullptr, text.c_str()), 1);
    EXPECT_EQ(driver.Dialog(nullptr, 1), 1);
    HandleMessages();
    EXPECT_EQ(driver.Dialog(nullptr, 0), 1);
    HandleMessages();
  }
  EXPECT_TRUE(PollsAgain());
}

TEST_F(Texts, OfAnyKindMayNameAnIniFileThatIsNotThere) {
  const std::string defaults = "$MTCOM=0.000000,3.000000";
  for (const std::string& text : kTexts) {
    for (const std::string& section : kTexts) {
      driver.SetIni(nullptr, text.c_str(), section.c_str());
      controller.Clear();
      ASSERT_EQ(Start(), 1);
      EXPECT_TRUE(controller.Saw(defaults)) << text.substr(0, 10) << " " << section.substr(0, 10);
      driver.End(nullptr);
    }
  }
  for (const char* path : {"C:\\no such folder\\x.ini", "Q:\\x.ini", "\\\\nobody\\share\\x.ini"}) {
    driver.SetIni(nullptr, path, "Mount");
    controller.Clear();
    ASSERT_EQ(Start(), 1) << path;
    EXPECT_TRUE(controller.Saw(defaults)) << path;
    driver.End(nullptr);
  }
}

TEST_F(Texts, OfAnIniFileAreCutToTheDriversBuffer) {
  const std::string file = folder.Narrow() + "\\mount.ini";
  WritePrivateProfileStringA("Mount", "_OverrideMeridianStopPoint", kLong.c_str(), file.c_str());
  WritePrivateProfileStringA("Mount", "_OverrideMeridianGoto",
                             ("4.5" + std::string(200, ' ') + "x").c_str(), file.c_str());
  driver.SetIni(nullptr, file.c_str(), "Mount");
  ASSERT_EQ(Start(), 1);
  EXPECT_TRUE(controller.Saw("$MTCOM=0.000000,4.500000"));
}

TEST_F(Texts, OfAnyKindMayNameTheJournal) {
  const CurrentFolder there(folder.Path());
  const std::string inFolder = folder.Narrow() + "\\";
  // No file can have a name of that length or with control characters.
  const auto isName = [](const std::string& text) {
    return text.size() < 200 &&
           std::none_of(
               text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == 0x7F; });
  };
  for (const std::string& text : kTexts) {
    for (const auto& [path, prefix] : {std::pair(text, kScope), std::pair(inFolder, text)}) {
      const int before = Journals();
      driver.SetLogPath(nullptr, path.c_str());
      driver.SetLogPrefix(nullptr, prefix.c_str());
      StartSession();
      LoseAReply();
      EXPECT_EQ(driver.End(nullptr), 1);
      EXPECT_EQ(Journals() - before, isName(text)) << path.substr(0, 20) << prefix.substr(0, 20);
    }
  }
  EXPECT_THAT(JournalNames(), Contains(StartsWith(L"%s%n%d_timeouterr_")));
  EXPECT_THAT(JournalNames(), Contains(StartsWith(L"%s%n%dscope_timeouterr_")));
}

TEST_F(Texts, ThatMakeNoFileNameCostTheJournalAndNothingElse) {
  const std::string inFolder = folder.Narrow() + "\\";
  const std::vector<std::pair<std::string, std::string>> places = {
      {kLong, "scope"},       {inFolder, kLong},       {"C:\\no such folder\\", "scope"},
      {"Q:\\", "scope"},      {inFolder + "?*|", "a"}, {inFolder, "no such folder\\scope"},
      {"\\\\nobody\\s\\", ""}};
  for (const auto& [path, prefix] : places) {
    driver.SetLogPath(nullptr, path.c_str());
    driver.SetLogPrefix(nullptr, prefix.c_str());
    StartSession();
    LoseAReply();
    EXPECT_EQ(driver.End(nullptr), 1);
    EXPECT_EQ(Journals(), 0) << path.substr(0, 20) << " " << prefix.substr(0, 20);
  }
  driver.SetLogPath(nullptr, inFolder.c_str());
  driver.SetLogPrefix(nullptr, "scope");
  StartSession();
  EXPECT_EQ(driver.End(nullptr), 1);
  EXPECT_EQ(Journals(), 1) << "all failures are still known";
}

TEST_F(Texts, AreReadToTheirEndAndNoFurther) {
  for (const size_t length : {1, 100, 4000}) {
    const std::string text(length, 'x');
    const GuardedMemory memory(length + 1);
    const char* guarded = memory.Fill(text.c_str(), length + 1);
    EXPECT_EQ(driver.SetName(nullptr, guarded), 1);
    EXPECT_EQ(driver.SetVendor(nullptr, guarded), 1);
    EXPECT_EQ(driver.SetIni(nullptr, guarded, guarded), 1);
    EXPECT_EQ(driver.SetLogPath(nullptr, guarded), 1);
    EXPECT_EQ(driver.SetLogPrefix(nullptr, guarded), 1);
    char version[8];
    EXPECT_EQ(driver.Check(nullptr, guarded, nullptr, version, sizeof version, nullptr, 0), 0);
  }
}

}  // namespace
