// SPDX-License-Identifier: MIT
#include "tests/library/endurance/soak_fixture.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>

#include "tests/library/endurance/compressed_clock.h"
#include "tests/library/endurance/process_figures.h"
#include "tests/support/eventually.h"
#include "tests/support/file_text.h"

namespace {

constexpr const char* kThreads = "threads";
constexpr const char* kHandles = "handles";
constexpr const char* kSockets = "sockets";
constexpr const char* kWorkingSet = "working set, KiB";
constexpr const char* kPageFile = "own pages, KiB";
constexpr const char* kLibraryBlocks = "library's blocks";
constexpr const char* kLibraryBytes = "library's bytes";

// What a process may gain in a whole run without a leak: pages that the system touches late.
constexpr double kPagesLimitKiB = 2048.0;

// "HH:MM:SS COMMAND : REASON"; a slow exchange has a second line, which shares the command's text
// with the first.
int64_t TextBytes(const std::string& line, const std::string& lineBefore) {
  constexpr int64_t kTextHeader = 24;
  const auto textBytes = [](size_t length) {
    return kTextHeader + static_cast<int64_t>(length) + 1;
  };
  const size_t command = line.find(' ') + 1;
  const size_t colon = line.rfind(" : ");
  const size_t reason = colon + 3;
  const bool second = line.compare(reason, 8, "TimeOut(") == 0 &&
                      (lineBefore.ends_with("Mismatch") || lineBefore.ends_with("Receve") ||
                       lineBefore.ends_with("FD_ISSET"));
  return textBytes(line.size() - reason) + (second ? 0 : textBytes(colon - command));
}

}  // namespace

Soak::Soak() : controller(&CompressedClock::Seconds) {
  driver.SetLogPath(nullptr, (journals.Narrow() + "\\").c_str());
}

Soak::~Soak() {
  driver.End(nullptr);
}

void Soak::Start() {
  ASSERT_EQ(driver.Start(nullptr, SteadyController::Address(), nullptr, 0), 1);
  const int64_t polls = PollsSoFar();
  double radec[2];
  ASSERT_TRUE(Eventually([&] { return PollsSoFar() > polls && driver.GetPos(nullptr, radec) == 1; },
                         kSoon));
}

void Soak::Sample(double at) {
  figures[kLibraryBlocks].Add(at, static_cast<double>(LibraryMemory::Blocks()));
  figures[kLibraryBytes].Add(at, static_cast<double>(LibraryMemory::Bytes()));
  const ProcessFigures process = ReadProcessFigures();
  figures[kThreads].Add(at, process.threads);
  figures[kHandles].Add(at, process.handles);
  figures[kSockets].Add(at, process.sockets);
  figures[kWorkingSet].Add(at, static_cast<double>(process.workingSetKiB));
  figures[kPageFile].Add(at, static_cast<double>(process.pageFileKiB));
}

void Soak::Report(const std::string& what, const std::string& unit) const {
  const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin_;
  std::printf("%s; %.0f s\n", what.c_str(), took.count());
  std::printf("  %-18s %12s %12s %12s %12s  slope per %s\n", "", "start", "end", "smallest",
              "largest", unit.c_str());
  for (const auto& [name, trend] : figures) {
    std::printf("  %-18s %12.0f %12.0f %12.0f %12.0f  %+.3g\n", name.c_str(), trend.First(),
                trend.Last(), trend.Smallest(), trend.Largest(), trend.Slope());
  }
  std::printf("  %zu lines in the journal\n", JournalLines().size());
  std::fflush(stdout);
}

void Soak::ExpectFlatProcess() const {
  for (const char* name : {kThreads, kHandles, kSockets}) {
    const Trend& trend = figures.at(name);
    EXPECT_EQ(trend.Last(), trend.First()) << name;
    EXPECT_LT(trend.Growth(), 0.5) << name;
  }
  for (const char* name : {kWorkingSet, kPageFile}) {
    EXPECT_LT(figures.at(name).Growth(), kPagesLimitKiB) << name;
  }
}

void Soak::ExpectFlatLibrary() const {
  const std::vector<std::string> lines = JournalLines();
  const Trend& blocks = figures.at(kLibraryBlocks);
  EXPECT_EQ(blocks.Smallest(), blocks.First());
  // The list itself, and two texts a record.
  const auto records = static_cast<double>(lines.size());
  EXPECT_LE(blocks.Largest() - blocks.First(), lines.empty() ? 0.0 : 2.0 * records + 1.0);
  const Trend& bytes = figures.at(kLibraryBytes);
  EXPECT_LE(bytes.Largest() - bytes.First(), static_cast<double>(MostJournalBytes(lines)));
}

void Soak::ExpectGrownByTheJournal(int64_t bytesBefore) const {
  const std::vector<std::string> lines = JournalLines();
  const int64_t grown = LibraryMemory::Bytes() - bytesBefore;
  if (MostJournalBytes(lines) == JournalBytes(lines)) {
    EXPECT_EQ(grown, JournalBytes(lines));
  } else {
    EXPECT_GE(grown, JournalBytes(lines));
    EXPECT_LE(grown, MostJournalBytes(lines));
  }
}

std::vector<std::string> Soak::JournalLines() const {
  std::filesystem::path last;  // the names tell the time
  for (const auto& entry : std::filesystem::directory_iterator(journals.Path())) {
    last = std::max(last, entry.path());
  }
  const std::string text = ReadWholeFile(last).value_or("");
  std::vector<std::string> lines;
  size_t from = 0;
  for (size_t end; (end = text.find("\r\n", from)) != std::string::npos; from = end + 2) {
    lines.push_back(text.substr(from, end - from));
  }
  return lines;
}

// What the list of failures holds: three words a record, room for 16 records that doubles whenever
// it is full, and the records' texts.
int64_t Soak::JournalBytes(const std::vector<std::string>& lines) {
  constexpr int64_t kRecord = 24;
  int64_t room = lines.empty() ? 0 : 16;
  while (room < static_cast<int64_t>(lines.size())) room *= 2;
  int64_t bytes = room * kRecord;
  std::string before;
  for (const std::string& line : lines) {
    bytes += TextBytes(line, before);
    before = line;
  }
  return bytes;
}

int64_t Soak::MostJournalBytes(const std::vector<std::string>& lines) {
  int64_t bytes = JournalBytes(lines);
  for (const std::string& line : lines) {
    // A command that was put together has room for half as much again, and a session that went
    // wrong may have kept another text of the controller's.
    if (line.find("$MTSTA?") == std::string::npos) {
      bytes += static_cast<int64_t>(line.size()) / 2 + 64;
    }
  }
  return bytes;
}
