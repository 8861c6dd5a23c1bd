// SPDX-License-Identifier: MIT
// A disk on which a part of the journal, or of the log, has room: one that is mounted where the log
// is, or a limit to the size of files where nothing may be mounted (see small_disk.h).
#include <windows.h>

#include <gmock/gmock.h>

#include <filesystem>
#include <memory>

#include "simulator/scripted_controller.h"
#include "tests/library/bad_calls/small_disk.h"
#include "tests/library/endurance/compressed_clock.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::SizeIs;
using testing::StartsWith;

constexpr uint64_t kJournalBytes = 64 * 1024;
constexpr uint64_t kLogBytes = 4096;  // the least that the disk has room for, but none
constexpr const char* kKey = "SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting";

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

class OnASmallDisk : public testing::Test {
 protected:
  OnASmallDisk() { controller.LooksLikeAMount(); }

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
  const std::unique_ptr<SmallDisk> disk = SmallDisk::OfThisProcess();
};

class JournalOnASmallDisk : public OnASmallDisk {
 protected:
  JournalOnASmallDisk() {
    std::filesystem::remove_all(Folder());
    std::filesystem::create_directory(Folder());
  }
  ~JournalOnASmallDisk() override { std::filesystem::remove_all(Folder()); }

  static std::filesystem::path Folder() { return SmallDisk::Path() / L"journals"; }
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
    for (const auto& entry : std::filesystem::directory_iterator(Folder())) {
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
  driver.SetLogPath(nullptr, (TempFolder::NarrowPath(Folder()) + "\\").c_str());
  disk->LeaveRoom(kJournalBytes);
  ASSERT_TRUE(SessionWorks(driver));
  const int failures = FailOften();
  const std::string beginning = EndInto("part");
  EXPECT_EQ(beginning.size(), kJournalBytes);

  disk->LeaveRoom(0);
  ASSERT_TRUE(SessionWorks(driver)) << "with no room at all";
  EXPECT_EQ(EndInto("nothing"), "");

  disk->MakeRoom();
  ASSERT_TRUE(SessionWorks(driver));
  const std::string whole = EndInto("whole");
  EXPECT_GT(whole.size(), kJournalBytes);
  EXPECT_THAT(whole, StartsWith(beginning));
  EXPECT_GE(CountOf(whole, " : Return Value Mismatch\r\n"), failures);
}

class LogOnASmallDisk : public OnASmallDisk {
 protected:
  LogOnASmallDisk() { RegSetKeyValueA(HKEY_CURRENT_USER, kKey, "DeviceLogWrite", REG_SZ, "on", 3); }
  ~LogOnASmallDisk() override {
    RegDeleteTreeA(HKEY_CURRENT_USER, "SOFTWARE\\Halvorn");
    std::filesystem::remove_all(SmallDisk::Path() / L"Halvorn");
  }
  static std::filesystem::path LogFile() {
    return SmallDisk::Path() / L"Halvorn" / L"Ambrix" / L"3.0" / L"velquin.log";
  }
};

TEST_F(LogOnASmallDisk, HasItsBeginningAndTheSessionsGoOn) {
  disk->LeaveRoom(kLogBytes);
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
  disk->MakeRoom();
  {
    const DriverLibrary driver;
    ASSERT_TRUE(SessionWorks(driver));
    EXPECT_EQ(driver.End(nullptr), 1);
  }
  EXPECT_EQ(CountOf(ReadWholeFile(LogFile()).value_or(""), "\r\n"), 3);
}

}  // namespace
