// SPDX-License-Identifier: MIT
// A long run of the loaded library: what the process holds is read at points of rest, printed as a
// table, and must not grow. See run_length.h.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "tests/library/endurance/library_memory.h"
#include "tests/library/endurance/steady_controller.h"
#include "tests/library/endurance/trend.h"
#include "tests/support/driver_library.h"
#include "tests/support/run_length.h"
#include "tests/support/temp_folder.h"

class Soak : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{20};  // a deadline, not a wait

  Soak();
  ~Soak() override;

  static int64_t Times(int64_t full, int64_t brief) { return IsFullLength() ? full : brief; }

  /// Connects and waits until a position has been read.
  void Start();
  int64_t PollsSoFar() const { return controller.Polls(); }

  /// Reads every figure. To be called where the library rests: after an end, or in its sleep.
  void Sample(double at);
  /// Prints first and last value and slope of every figure.
  void Report(const std::string& what, const std::string& unit) const;
  /// Threads, handles and sockets are as many as they were, and the pages do not grow.
  void ExpectFlatProcess() const;
  /// What the library holds is to the byte what it held at the first point, but for the failures
  /// that its journal tells of. Call it after the end of the session, like Report.
  void ExpectFlatLibrary() const;
  /// What the library holds has grown by its journal and nothing else: to the byte, as long as all
  /// failures are those of status queries.
  void ExpectGrownByTheJournal(int64_t bytesBefore) const;

  /// @return the lines of the journal that was written last; none without a journal.
  std::vector<std::string> JournalLines() const;
  /// @return what the library's list of failures takes when these are its lines.
  static int64_t JournalBytes(const std::vector<std::string>& lines);
  /// @return the most it can take: the same, when all are failures of status queries.
  static int64_t MostJournalBytes(const std::vector<std::string>& lines);

  TempFolder journals;
  SteadyController controller;
  DriverLibrary driver;
  LibraryMemory memory;
  std::map<std::string, Trend> figures;

 private:
  const std::chrono::steady_clock::time_point begin_ = std::chrono::steady_clock::now();
};
