// SPDX-License-Identifier: MIT
#include "tests/library/faults/matrix_table.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "simulator/formatted.h"

namespace {

using simulator::Formatted;

std::string MsText(double ms) {
  return ms < 0.0 ? "" : Formatted("%.0f", ms);
}

void PrintRow(const std::string& title, const std::string (&texts)[kPhases]) {
  std::printf("| %s |", title.c_str());
  for (const std::string& text : texts) std::printf(" %s |", text.c_str());
  std::printf("\n");
}

void PrintHead(const char* title) {
  std::string names[kPhases];
  for (int phase = 0; phase < kPhases; ++phase) names[phase] = PhaseName(Phase{phase});
  PrintRow(title, names);
  std::printf("|---|");
  for (int phase = 0; phase < kPhases; ++phase) std::printf("---|");
  std::printf("\n");
}

}  // namespace

void MatrixTable::Add(FaultKind kind, Phase phase, const CellResult& result, int repeats) {
  Cell& cell = cells_[static_cast<int>(kind)][static_cast<int>(phase)];
  ++cell.run;
  cell.held += result.broken.empty() && result.late.empty();
  cell.closedTooEarly += result.stopKept || result.queueCut;
  cell.failedStarts += result.failedStart;
  Longest& longest = longest_[static_cast<int>(phase)];
  longest.checkMs = std::max(longest.checkMs, result.checkMs);
  longest.startMs = std::max(longest.startMs, result.startMs);
  longest.stopMs = std::max(longest.stopMs, result.stopMs);
  longest.endMs = std::max(longest.endMs, result.endMs);
  longest.dialogMs = std::max(longest.dialogMs, result.dialogMs);
  longest.callMs = std::max(longest.callMs, result.callMs);
  ++cellsRun_;
  if (result.dialogMs >= 0.0) openingsMs_.push_back(result.dialogMs);
  cellsRepeated_ += repeats > 0;
  exchanges_ += result.exchanges;
  failures_ += result.failures;
  oddPositions_ += result.oddPositions;
  machineDelayMs_ = std::max(machineDelayMs_, result.machineDelayMs);
}

void MatrixTable::Print() const {
  if (cellsRun_ == 0) return;
  std::printf(
      "\nRun and held; * in so many the link was closed before the stop, or all of the queue, was "
      "sent; ~ so many starts failed, so that there was nothing to stop\n\n");
  PrintHead("fault");
  for (int kind = 0; kind < kFaultKinds; ++kind) {
    std::string texts[kPhases];
    for (int phase = 0; phase < kPhases; ++phase) {
      const Cell& cell = cells_[kind][phase];
      if (cell.run > 0) texts[phase] = Formatted("%d/%d", cell.held, cell.run);
      if (cell.closedTooEarly > 0) texts[phase] += Formatted(" *%d", cell.closedTooEarly);
      if (cell.failedStarts > 0) texts[phase] += Formatted(" ~%d", cell.failedStarts);
    }
    PrintRow(FaultName(FaultKind{kind}), texts);
  }
  std::printf("\nLongest times, ms\n\n");
  PrintHead("call");
  const auto row = [&](const char* title, double Longest::* field) {
    std::string texts[kPhases];
    for (int phase = 0; phase < kPhases; ++phase) texts[phase] = MsText(longest_[phase].*field);
    PrintRow(title, texts);
  };
  row("TelescopeCheck", &Longest::checkMs);
  row("TelescopeStart", &Longest::startMs);
  row("TelescopeStop to the wire", &Longest::stopMs);
  row("TelescopeEnd", &Longest::endMs);
  row("TelescopeDialog, opening", &Longest::dialogMs);
  row("every other call", &Longest::callMs);
  std::printf(
      "\n%d cells, %d exchanges, %d lines in the journals as predicted; %d polls told a position "
      "from a line that was garbled or joined of two;\n%d cells repeated because the machine was "
      "busy; its longest delay %.0f ms\n",
      cellsRun_, exchanges_, failures_, oddPositions_, cellsRepeated_, machineDelayMs_);
  PrintOpenings();
}

void MatrixTable::PrintOpenings() const {
  if (openingsMs_.empty()) return;
  std::vector<double> sorted = openingsMs_;
  std::sort(sorted.begin(), sorted.end());
  const auto slow =
      std::count_if(sorted.begin(), sorted.end(), [](double ms) { return ms > 100.0; });
  std::printf(
      "the hand controller was opened %d times, %d of them took more than 100 ms; half took "
      "%.0f ms or less\n",
      static_cast<int>(sorted.size()), static_cast<int>(slow), sorted[sorted.size() / 2]);
}
