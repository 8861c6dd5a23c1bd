// SPDX-License-Identifier: MIT
#include "core/net/time_out_journal.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "framework/base/exceptions.h"
#include "tests/core/net/platform_faults.h"
#include "tests/support/file_text.h"
#include "tests/support/local_time.h"
#include "tests/support/temp_folder.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

#ifdef _WIN32
const std::string kEol = "\r\n";
#else
const std::string kEol = "\n";
#endif

std::tm TimeOf(int year, int month, int day, int hour, int minute, int second) {
  std::tm time = {};
  time.tm_year = year - 1900;
  time.tm_mon = month - 1;
  time.tm_mday = day;
  time.tm_hour = hour;
  time.tm_min = minute;
  time.tm_sec = second;
  return time;
}

class TimeOutJournal : public testing::Test {
 protected:
  TimeOutJournal() { ItIs(TimeOf(2024, 3, 5, 21, 7, 9)); }

  void ItIs(const std::tm& localTime) {
    faults.localTime = [localTime](int64_t, std::tm& local) {
      local = localTime;
      return true;
    };
  }
  void Record(const char* command, int32_t clockMs, const char* reason) {
    TimeOutErrorW error{command, clockMs, reason};
    errors.Add(error);
  }
  std::string FolderWithSeparator() const {
    return folder.Narrow() + static_cast<char>(std::filesystem::path::preferred_separator);
  }
  void Write(const char* prefix = "scope1") {
    WriteTimeOutJournal(errors, FolderWithSeparator().c_str(), prefix);
  }
  std::vector<std::filesystem::path> Files() const {
    std::vector<std::filesystem::path> names;
    for (const auto& entry : std::filesystem::directory_iterator(folder.Path())) {
      names.push_back(entry.path().filename());
    }
    std::sort(names.begin(), names.end());
    return names;
  }
  std::string Contents(const std::filesystem::path& name) const {
    return ReadWholeFile(folder / name).value_or("(no such file)");
  }
  static std::string Line(int32_t clockMs) {
    return TimeOutJournalLine({"$MTSTA?", clockMs, "TimeOut"}).GetString();
  }
  static std::string Path(const char* folder, const char* prefix) {
    return TimeOutJournalPath(folder, prefix, TimeOf(2024, 3, 5, 21, 7, 9)).GetString();
  }

  PlatformFaults faults;
  TempFolder folder;
  TimeOutErrorList errors;
};

const std::filesystem::path kName = "scope1_timeouterr_korvelwireless_20240305_210709.txt";

// --- Names ---------------------------------------------------------------------------------------

TEST_F(TimeOutJournal, IsNamedAfterFolderPrefixAndLocalTime) {
  EXPECT_EQ(Path("C:\\logs\\", "scope1"),
            "C:\\logs\\scope1_timeouterr_korvelwireless_20240305_210709.txt");
}

TEST_F(TimeOutJournal, NeedsNoPrefix) {
  EXPECT_EQ(Path("C:\\logs\\", ""), "C:\\logs\\_timeouterr_korvelwireless_20240305_210709.txt");
}

TEST_F(TimeOutJournal, PutsNoSeparatorBehindTheFolder) {
  EXPECT_EQ(Path("C:\\logs", "scope1"),
            "C:\\logsscope1_timeouterr_korvelwireless_20240305_210709.txt");
}

TEST_F(TimeOutJournal, NeedsNoFolder) {
  EXPECT_EQ(Path("", "scope1"), kName.string());
}

TEST_F(TimeOutJournal, TakesPercentSignsInNamesAsTheyAre) {
  EXPECT_EQ(Path("%s\\", "%d"), "%s\\%d_timeouterr_korvelwireless_20240305_210709.txt");
}

TEST_F(TimeOutJournal, IsNamedWithoutATimeThatCannotBeWritten) {
  PlatformFaults::timesCannotBeWritten = true;
  EXPECT_EQ(Path("", "scope1"), "scope1_timeouterr_korvelwireless_.txt");
}

TEST_F(TimeOutJournal, IsNamedAfterTheLocalTimeOfTheMoment) {
  faults.localTime = nullptr;
  Record("$SYVER?", 0, "TimeOut");
  const std::time_t before = std::time(nullptr);
  Write();
  const std::time_t after = std::time(nullptr);
  ASSERT_EQ(Files().size(), 1u);
  const std::string name = Files()[0].string();
  std::vector<std::string> possible;
  for (std::time_t time = before; time <= after; ++time) {
    const std::tm local = LocalTimeAt(time);
    char stamp[32];
    std::strftime(stamp, sizeof stamp, "%Y%m%d_%H%M%S", &local);
    possible.push_back(std::string("scope1_timeouterr_korvelwireless_") + stamp + ".txt");
  }
  EXPECT_THAT(possible, testing::Contains(name));
}

// --- Lines ---------------------------------------------------------------------------------------

TEST_F(TimeOutJournal, WritesTheTimeSinceTheHostStarted) {
  EXPECT_EQ(Line(3723900), "01:02:03 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(0), "00:00:00 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(999), "00:00:00 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(59999), "00:00:59 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(3600000), "01:00:00 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(90000000), "25:00:00 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(450000000), "125:00:00 $MTSTA? : TimeOut\n");
}

// The time goes through hours, as all clock times of the driver do: 13 s are no whole number of
// hundredths of an hour and come out a hair below 13.
TEST_F(TimeOutJournal, CutsTheSecondsThatComeOutOfTheHours) {
  EXPECT_EQ(Line(13000), "00:00:12 $MTSTA? : TimeOut\n");
  EXPECT_EQ(Line(14000), "00:00:14 $MTSTA? : TimeOut\n");
}

TEST_F(TimeOutJournal, HasALineForEveryRecordOldestFirst) {
  Record("$SYVER?", 1000, "FD_ISSET");
  Record("$SYVER?", 1000, "TimeOut(1000)");
  Record("$MTSTA?", 61000, "Can't Receve");
  Write();
  EXPECT_THAT(Files(), ElementsAre(kName));
  EXPECT_EQ(Contents(kName), "00:00:01 $SYVER? : FD_ISSET" + kEol +
                                 "00:00:01 $SYVER? : TimeOut(1000)" + kEol +
                                 "00:01:01 $MTSTA? : Can't Receve" + kEol);
}

// The second bytes of these characters are "\" and "|"; nobody may take them for such.
TEST_F(TimeOutJournal, WritesTextsByteForByte) {
  Record("$MTTGT=3,0.0,0.0,\x95\x5C\x83\x7C 100%d", 0, "TimeOut");
  Write();
  EXPECT_EQ(Contents(kName), "00:00:00 $MTTGT=3,0.0,0.0,\x95\x5C\x83\x7C 100%d : TimeOut" + kEol);
}

TEST_F(TimeOutJournal, WritesAnyNumberOfLines) {
  std::string expected;
  for (int i = 0; i < 2000; ++i) {
    Record("$MTSTA?", 1000, "TimeOut");
    expected += "00:00:01 $MTSTA? : TimeOut" + kEol;
  }
  Write();
  EXPECT_EQ(Contents(kName), expected);
}

// --- Files ---------------------------------------------------------------------------------------

TEST_F(TimeOutJournal, IsNotWrittenWithoutRecords) {
  Write();
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TimeOutJournal, RepeatsEarlierRecordsInALaterFile) {
  Record("$SYVER?", 1000, "TimeOut");
  Write();
  ItIs(TimeOf(2024, 3, 5, 21, 7, 10));
  Write();
  ItIs(TimeOf(2024, 3, 5, 21, 8, 0));
  Record("$MTSTA?", 2000, "Socket Close");
  Write();
  EXPECT_EQ(errors.GetSize(), 2) << "writing empties nothing";
  const std::string first = "00:00:01 $SYVER? : TimeOut" + kEol;
  EXPECT_EQ(Files().size(), 3u);
  EXPECT_EQ(Contents(kName), first);
  EXPECT_EQ(Contents("scope1_timeouterr_korvelwireless_20240305_210710.txt"), first);
  EXPECT_EQ(Contents("scope1_timeouterr_korvelwireless_20240305_210800.txt"),
            first + "00:00:02 $MTSTA? : Socket Close" + kEol);
}

TEST_F(TimeOutJournal, ReplacesAFileOfTheSameName) {
  WriteWholeFile(folder / kName, "something longer than the journal will be ...................");
  Record("$SYVER?", 1000, "TimeOut");
  Write();
  EXPECT_EQ(Contents(kName), "00:00:01 $SYVER? : TimeOut" + kEol);
}

TEST_F(TimeOutJournal, LandsBesideAFolderGivenWithoutSeparator) {
  Record("$SYVER?", 1000, "TimeOut");
  WriteTimeOutJournal(errors, folder.Narrow("logs").c_str(), "scope1");
  EXPECT_THAT(Files(), ElementsAre("logs" + kName.string()));
}

TEST_F(TimeOutJournal, LandsInTheCurrentFolderWhenNoneIsGiven) {
  const std::filesystem::path before = std::filesystem::current_path();
  std::filesystem::current_path(folder.Path());
  Record("$SYVER?", 1000, "TimeOut");
  WriteTimeOutJournal(errors, "", "scope1");
  std::filesystem::current_path(before);
  EXPECT_THAT(Files(), ElementsAre(kName));
}

// The names come in the host's narrow code page, which is 932 where this driver is at home.
TEST_F(TimeOutJournal, TakesJapaneseNames) {
  const TempFolder japanese(u8"観測表");  // ends in a byte "\" in code page 932
  const std::filesystem::path prefix(u8"望遠鏡");
  const std::string path =
      japanese.Narrow() + static_cast<char>(std::filesystem::path::preferred_separator);
  Record("$SYVER?", 1000, "TimeOut");
  WriteTimeOutJournal(errors, path.c_str(), TempFolder::NarrowPath(prefix).c_str());
  std::filesystem::path name = prefix;
  name += "_timeouterr_korvelwireless_20240305_210709.txt";
  EXPECT_EQ(ReadWholeFile(japanese / name), "00:00:01 $SYVER? : TimeOut" + kEol);
}

TEST_F(TimeOutJournal, SaysNothingWhenItCannotBeWritten) {
  Record("$SYVER?", 1000, "TimeOut");
  const std::string missing = folder.Narrow("missing") + "/";
  EXPECT_NO_THROW(WriteTimeOutJournal(errors, missing.c_str(), "scope1"));
  std::filesystem::create_directory(folder / kName);
  EXPECT_NO_THROW(Write());
  EXPECT_THAT(Files(), ElementsAre(kName));
  EXPECT_TRUE(std::filesystem::is_empty(folder / kName));
}

#ifdef _WIN32

TEST_F(TimeOutJournal, IsNotWrittenWhileAnotherProgramHasTheFile) {
  Record("$SYVER?", 1000, "TimeOut");
  WriteWholeFile(folder / kName, "another's");
  {
    const std::ifstream another(folder / kName);
    ASSERT_TRUE(another.is_open());
    EXPECT_NO_THROW(Write());
  }
  EXPECT_EQ(Contents(kName), "another's");
  EXPECT_EQ(errors.GetSize(), 1) << "what failed stays known";
  Write();
  EXPECT_EQ(Contents(kName), "00:00:01 $SYVER? : TimeOut" + kEol);
}

#endif

TEST_F(TimeOutJournal, ThrowsWhenThereIsNoLocalTime) {
  Record("$SYVER?", 1000, "TimeOut");
  faults.localTime = [](int64_t, std::tm&) { return false; };
  try {
    Write();
    FAIL() << "should have thrown";
  } catch (const CAtlException& error) {
    EXPECT_EQ(error.m_hr, static_cast<HRESULT>(0x80070057u));
  }
  EXPECT_THAT(Files(), IsEmpty());
}

TEST_F(TimeOutJournal, NeedsNoLocalTimeWithoutRecords) {
  faults.localTime = [](int64_t, std::tm&) { return false; };
  EXPECT_NO_THROW(Write());
}

}  // namespace
