// SPDX-License-Identifier: MIT
// A disk without room for the journal: its names for the seconds to come lead to a device that is
// always full.
#include <windows.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <optional>
#include <set>

#include "tests/library/bad_calls/full_device.h"
#include "tests/library/dll/driver_fixture.h"
#include "tests/support/file_text.h"
#include "tests/support/local_time.h"

namespace {

class FullDisk : public DriverTest {
 protected:
  /// Whatever the journal is called within the next two minutes, there is no room for it.
  void FillTheDisk() {
    std::vector<std::string> names;
    const std::time_t now = std::time(nullptr);
    for (std::time_t at = now; at < now + 120; ++at) {
      const std::tm local = LocalTimeAt(at);
      char name[80];
      std::strftime(name, sizeof name, "scope_timeouterr_korvelwireless_%Y%m%d_%H%M%S.txt", &local);
      names.push_back(name);
    }
    disk.emplace(folder.Path(), names);
    links.insert(names.begin(), names.end());
  }
  void LoseAReply() {
    controller.AnswersOnce("$MTSTA?", simulator::ScriptedReply("$SYVER=1.00"));
    ASSERT_TRUE(PollsAgain());
  }
  std::vector<std::string> FilesBesideTheLinks() const {
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      const std::string name = entry.path().filename().string();
      if (!links.contains(name)) names.push_back(name);
    }
    return names;
  }

  std::optional<FullDevice> disk;  // goes before the folder
  std::set<std::string> links;
};

TEST_F(FullDisk, IsFull) {
  const FullDevice disk(folder.Path(), {"full"});
  std::FILE* file = std::fopen(folder.Narrow("full").c_str(), "wt");
  ASSERT_NE(file, nullptr);
  EXPECT_GE(std::fputs("text", file), 0);
  SetLastError(0);
  EXPECT_NE(std::fflush(file), 0);
  EXPECT_EQ(GetLastError(), static_cast<DWORD>(ERROR_DISK_FULL));
  const int open = CountOpenDevices();
  std::fclose(file);
  EXPECT_EQ(CountOpenDevices(), open - 1) << "an open device counts";
}

TEST_F(FullDisk, CostsTheJournalAndNothingElse) {
  driver.SetLogPrefix(nullptr, "scope");
  FillTheDisk();
  const int open = CountOpenDevices();
  for (int round = 0; round < 5; ++round) {
    StartSession();
    LoseAReply();
    EXPECT_EQ(driver.End(nullptr), 1);
    EXPECT_THAT(FilesBesideTheLinks(), testing::IsEmpty()) << "written to another name";
    EXPECT_EQ(CountOpenDevices(), open) << "the journal stays open";
  }
  // With room again, all of it is written.
  driver.SetLogPrefix(nullptr, "roomy");
  StartSession();
  EXPECT_EQ(driver.End(nullptr), 1);
  const std::vector<std::string> files = FilesBesideTheLinks();
  ASSERT_EQ(files.size(), 1u);
  const std::string journal = ReadWholeFile(folder / files[0]).value_or("");
  EXPECT_GE(std::count(journal.begin(), journal.end(), '\n'), 4) << journal;
}

}  // namespace
