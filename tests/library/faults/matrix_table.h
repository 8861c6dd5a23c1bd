// SPDX-License-Identifier: MIT
// What the cells of the fault matrix saw, added up and printed as tables for docs/reliability.md.
// One thread.
#pragma once

#include <vector>

#include "tests/library/faults/matrix_cell.h"

class MatrixTable {
 public:
  /// @param repeats how often the cell was run before and was late because the machine was busy
  void Add(FaultKind kind, Phase phase, const CellResult& result, int repeats);
  /// Prints nothing when no cell was added.
  void Print() const;

 private:
  void PrintOpenings() const;

  struct Cell {
    int run = 0;
    int held = 0;
    int closedTooEarly = 0;
    int failedStarts = 0;
  };
  /// The longest times of a phase, milliseconds.
  struct Longest {
    double checkMs = -1.0;
    double startMs = -1.0;
    double stopMs = -1.0;
    double endMs = -1.0;
    double dialogMs = -1.0;
    double callMs = -1.0;
  };

  Cell cells_[kFaultKinds][kPhases];
  Longest longest_[kPhases];
  int cellsRun_ = 0;
  int cellsRepeated_ = 0;
  int exchanges_ = 0;
  int failures_ = 0;
  int oddPositions_ = 0;
  std::vector<double> openingsMs_;  // of the hand controller
  double machineDelayMs_ = 0.0;
};
