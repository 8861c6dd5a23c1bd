// SPDX-License-Identifier: MIT
// Every kind of fault in every phase of a session, through the built library.
//   FAULT_MATRIX_SEEDS  how many seeds; the whole matrix is run with each. Without it a quarter of
//                       the matrix is run with one seed, every fault and every phase among it.
#include <gmock/gmock.h>

#include <cstdio>
#include <cstdlib>
#include <ostream>
#include <string>
#include <vector>

#include "tests/library/faults/matrix_cell.h"
#include "tests/library/faults/matrix_table.h"

namespace {

struct CellPlace {
  FaultKind kind;
  Phase phase;
  uint64_t seed;
};

void PrintTo(const CellPlace& place, std::ostream* stream) {
  *stream << FaultName(place.kind) << " in " << PhaseName(place.phase) << ", seed " << place.seed;
}

std::string NameOf(const testing::TestParamInfo<CellPlace>& info) {
  std::string name = std::string(FaultName(info.param.kind)) + "_in_" +
                     PhaseName(info.param.phase) + "_" + std::to_string(info.param.seed);
  for (char& c : name) c = c == ' ' || c == '-' ? '_' : c;
  return name;
}

std::vector<CellPlace> Places() {
  const char* text = std::getenv("FAULT_MATRIX_SEEDS");
  const int seeds = text == nullptr ? 0 : std::atoi(text);
  std::vector<CellPlace> places;
  for (int seed = 1; seed <= (seeds > 0 ? seeds : 1); ++seed) {
    for (int kind = 0; kind < kFaultKinds; ++kind) {
      for (int phase = 0; phase < kPhases; ++phase) {
        if (seeds <= 0 && (kind + phase) % 4 != 0) continue;
        places.push_back({FaultKind{kind}, Phase{phase}, static_cast<uint64_t>(seed)});
      }
    }
  }
  return places;
}

class FaultMatrix : public testing::TestWithParam<CellPlace> {
 protected:
  static void TearDownTestSuite() { table.Print(); }

  static inline MatrixTable table;
};

// A cell that was late is run again only when the machine was seen to be busy meanwhile, and so may
// have been what was late. Order, journal and positions do not depend on that: when they do not
// hold, the cell is not run again.
TEST_P(FaultMatrix, HoldsItsPromises) {
  constexpr double kCalmMs = 20.0;
  constexpr double kUnclearMs = 100.0;
  constexpr int kMostRepeats = 4;
  const CellPlace& place = GetParam();
  for (int repeats = 0;; ++repeats) {
    const CellResult result = MatrixCell(place.kind, place.phase, place.seed).Run();
    const bool busy = result.machineDelayMs > kCalmMs || result.narrowMs < kUnclearMs;
    const bool onlyLate = result.broken.empty() && !result.late.empty();
    if (onlyLate && busy && repeats < kMostRepeats) continue;
    for (const std::string& broken : result.broken) ADD_FAILURE() << broken;
    for (const std::string& late : result.late) ADD_FAILURE() << late;
    if (HasFailure()) std::printf("The wire:\n%s\n", result.record.c_str());
    table.Add(place.kind, place.phase, result, repeats);
    return;
  }
}

INSTANTIATE_TEST_SUITE_P(Cells, FaultMatrix, testing::ValuesIn(Places()), NameOf);

}  // namespace
