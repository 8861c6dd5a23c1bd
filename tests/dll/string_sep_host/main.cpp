// SPDX-License-Identifier: MIT
// A host as Microsoft's compiler would build it: CStringSep through its public header, under that
// compiler's names and with its calls. Prints a line for each case. Exit code 0 when all is well,
// 1 when an expectation failed or memory was not given back to its owner.
#include "tests/dll/string_sep_host/cases.h"

constinit ATL::CountingManager manager(nullptr);
constinit ATL::CountingManager otherManager(&manager);

namespace {

int failures = 0;

struct Balance {
  int64_t texts = manager.InUse() + otherManager.InUse();
  int64_t strangers = manager.strangers + otherManager.strangers;
  int64_t blocks = BlocksInUse();
};

struct Difference {
  int64_t texts;      // that did not come back to the host's managers
  int64_t strangers;  // that came to the wrong one
  int64_t blocks;     // left on the heaps
  bool IsNothing() const { return texts == 0 && strangers == 0 && blocks == 0; }
};

Difference Measured(void (*run)()) {
  const Balance before;
  run();
  const Balance after;
  return {after.texts - before.texts, after.strangers - before.strangers,
          after.blocks - before.blocks};
}

void Report(const Difference& left) {
  Print("  texts that did not come back to the host's managers: ");
  PrintNumber(left.texts);
  Print("; that came to the wrong one: ");
  PrintNumber(left.strangers);
  Print("; blocks left on the heaps: ");
  PrintNumber(left.blocks);
  Print("\n");
}

// The first run is not measured, as it may make what stays. Nor is a block of the heap itself,
// which may take one when memory of some size has been asked for a few thousand times: that happens
// in one run, and a leak is there in each. Of texts every run is held to account.
void RunMeasured(void (*run)()) {
  run();
  Difference left = Measured(run);
  for (int again = 0; again < 2 && left.blocks > 0; ++again) {
    const Difference next = Measured(run);
    left = {left.texts + next.texts, left.strangers + next.strangers, next.blocks};
  }
  if (left.IsNothing()) return;
  ++failures;
  Report(left);
}

int RunAll(const Case* cases) {
  int count = 0;
  for (; cases->name != nullptr; ++cases) {
    const int before = failures;
    RunMeasured(cases->run);
    Print(failures == before ? "ok      " : "FAILED  ");
    Print(cases->name);
    Print("\n");
    ++count;
  }
  return count;
}

}  // namespace

void Expect(bool holds, const char* file, int line, const char* expression) {
  if (holds) return;
  ++failures;
  Print("  ");
  Print(file);
  Print(":");
  PrintNumber(line);
  Print(": ");
  Print(expression);
  Print("\n");
}

extern "C" int RunCases() {
  const int count = RunAll(resultCases) + RunAll(memoryCases);
  PrintNumber(count);
  Print(" cases, ");
  PrintNumber(manager.given + otherManager.given);
  Print(" texts, ");
  PrintNumber(failures);
  Print(" failures\n");
  return failures == 0 && manager.given > 0 ? 0 : 1;
}
