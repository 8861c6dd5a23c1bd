// SPDX-License-Identifier: MIT
// A disk on which a part of the journal, or of the log, has room. with-small-disk runs this: the
// user's folder for local data, where the log is, is then a disk of 1 MiB.
#include <windows.h>

#include <gmock/gmock.h>

#include <shlobj.h>

#include <filesystem>

#include "simulator/scripted_controller.h"
#include "tests/endurance/compressed_clock.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::SizeIs;
using testing::StartsWith;

constexpr uint64_t kDiskBytes = 1024 * 1024;
constexpr uint64_t kJournalBytes = 64 * 1024;
constexpr uint64_t kLogBytes = 4096;  // the least that the disk has room for, but none
constexpr const char* kKey = "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting";

/// The disk.
std::filesystem::path Disk() {
  wchar_t folder[MAX_PATH] = L"";
  SHGetFolderPathW(nullptr, CSIDL_LOCAL_APPDATA, nullptr, SHGFP_TYPE_CURRENT, folder);
  return folder;
}

/// @return bytes that have room on it.
uint64_t Room() {
  const std::filesystem::path disk = Disk();
  ULARGE_INTEGER room = {};
  EXPECT_TRUE(GetDiskFreeSpaceExW(disk.c_str(), &room, nullptr, nullptr));
  return room.QuadPart;
}

/// @return whether nobody has the file open, whoever it is.
bool IsClosed(const std::filesystem::path& path) {
  HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0,
                            nullptr);  // shares none
  if (file == INVALID_HANDLE_VALUE) return false;
  CloseHandle(file);
  return true;
}

int CountOf(const std::string& text, const std::string& part) {
  int count = 0;
  for (size_t at = 0; (at = text.find(part, at)) != std::string::npos; ++at) ++count;
  return count;
}

class SmallDisk : public testing::Test {
 protected:
  SmallDisk() { controller.LooksLikeAMount(); }
  ~SmallDisk() override { std::filesystem::remove(Filler()); }

  void SetUp() override { ASSERT_LE(Room(), kDiskBytes) << "run this through with-small-disk"; }
  /// Fills the disk but for this.
  void LeaveRoom(uint64_t bytes) {
    const uint64_t room = Room();
    ASSERT_GT(room, bytes);
    WriteWholeFile(Filler(), std::string(room - bytes, 'x'));
    ASSERT_EQ(Room(), bytes);
  }
  void MakeRoom() { ASSERT_TRUE(std::filesystem::remove(Filler())); }
  /// A session that finds the mount and goes on. @return whether it did
  bool SessionWorks(const DriverLibrary& driver) {
    if (driver.Start(nullptr, controller.Address().c_str(), nullptr, 0) != 1) return false;
    double radec[2];
    if (!Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, kSoon)) return false;
    const int polls = controller.CountOf("$MTSTA?");
    return controller.WaitForCount("$MTSTA?", polls + 2, kSoonMs);
  }

  static constexpr std::chrono::seconds kSoon{10};  // a deadline, not a wait
  static constexpr int kSoonMs = 10'000;

  simulator::ScriptedController controller;

 private:
  static std::filesystem::path Filler() { return Disk() / L"filler"; }
};

class JournalOnASmallDisk : public SmallDisk {
 protected:
  /// Exchanges that each leave a long line, together more than there is room for. @return how many
  int FailOften() {
    constexpr int kFailures = 120;
    controller.Answers("$MTAGS=", "$SYVER=1.00");
    for (int i = 1; i <= kFailures; ++i) {
      EXPECT_EQ(driver.SetGuideSpeed(nullptr, 1e308, 1e308), 1);
      EXPECT_TRUE(controller.WaitForCount("$MTAGS=", i, kSoonMs));
    }
    return kFailures;
  }
  /// The journal of a prefix, byte for byte.
  std::string Journal(const std::string& prefix) {
    std::vector<std::filesystem::path> found;
    for (const auto& entry : std::filesystem::directory_iterator(Disk())) {
      const std::string name = entry.path().filename().string();
      if (name.rfind(prefix + "_", 0) == 0) found.push_back(entry.path());
    }
    EXPECT_THAT(found, SizeIs(1)) << prefix;
    if (found.size() != 1) return "";
    EXPECT_TRUE(IsClosed(found[0])) << "the journal stays open";
    return ReadWholeFile(found[0]).value_or("");
  }
  std::string EndInto(const char* prefix) {
    driver.SetLogPrefix(nullptr, prefix);
    EXPECT_EQ(driver.End(nullptr), 1);
    return Journal(prefix);
  }

  const DriverLibrary driver;
  const CompressedClock clock;  // cycles take no time
};

TEST_F(JournalOnASmallDisk, HasItsBeginningAndIsWrittenWholeByTheNextEndThatHasRoom) {
  driver.SetLogPath(nullptr, (TempFolder::NarrowPath(Disk()) + "\\").c_str());
  ASSERT_NO_FATAL_FAILURE(LeaveRoom(kJournalBytes));
  ASSERT_TRUE(SessionWorks(driver));
  const int failures = FailOften();
  const std::string beginning = EndInto("part");
  EXPECT_EQ(beginning.size(), kJournalBytes);
  EXPECT_EQ(Room(), 0u);

  ASSERT_TRUE(SessionWorks(driver)) << "with no room at all";
  EXPECT_EQ(EndInto("nothing"), "");

  MakeRoom();
  ASSERT_TRUE(SessionWorks(driver));
  const std::string whole = EndInto("whole");
  EXPECT_GT(whole.size(), kJournalBytes);
  EXPECT_THAT(whole, StartsWith(beginning));
  EXPECT_GE(CountOf(whole, " : Return Value Mismatch\r\n"), failures);
}

class LogOnASmallDisk : public SmallDisk {
 protected:
  LogOnASmallDisk() { RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "DeviceLogWrite", REG_SZ, "on", 3); }
  ~LogOnASmallDisk() override {
    RegDeleteTreeA(HKEY_CURRENT_USER, "SOFTWARE\\Halvorn");
    std::filesystem::remove_all(Disk() / L"Halvorn");
  }
  static std::filesystem::path LogFile() {
    return Disk() / L"Halvorn" / L"Ambrix" / L"3.0" / L"velquin.log";
  }
};

TEST_F(LogOnASmallDisk, HasItsBeginningAndTheSessionsGoOn) {
  ASSERT_NO_FATAL_FAILURE(LeaveRoom(kLogBytes));
  constexpr int kSessions = 75;  // of two lines each, together more than there is room for
  {
    const DriverLibrary driver;
    ASSERT_TRUE(std::filesystem::exists(LogFile()));
    EXPECT_FALSE(IsClosed(LogFile())) << "an open log is seen";
    for (int i = 0; i < kSessions; ++i) {
      ASSERT_EQ(driver.Start(nullptr, controller.Address().c_str(), nullptr, 0), 1) << i;
      EXPECT_EQ(driver.End(nullptr), 1);
    }
    ASSERT_TRUE(SessionWorks(driver));
    EXPECT_EQ(driver.End(nullptr), 1);
  }
  EXPECT_TRUE(IsClosed(LogFile())) << "the log stays open";
  const std::string text = ReadWholeFile(LogFile()).value_or("");
  EXPECT_EQ(text.size(), kLogBytes);
  EXPECT_GT(CountOf(text, ":INFO:"), 80);
  // The next load of the library begins the log anew.
  MakeRoom();
  {
    const DriverLibrary driver;
    ASSERT_TRUE(SessionWorks(driver));
    EXPECT_EQ(driver.End(nullptr), 1);
  }
  EXPECT_EQ(CountOf(ReadWholeFile(LogFile()).value_or(""), "\r\n"), 3);
}

}  // namespace
