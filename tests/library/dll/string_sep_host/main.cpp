// SPDX-License-Identifier: MIT
// A host as Microsoft's compiler would build it: CStringSep through its public header, under that
// compiler's names and with its calls. Prints a line for each case. Exit code 0 when all is well,
// 1 when an expectation failed or memory was not given back to its owner.
#include "tests/library/dll/string_sep_host/cases.h"
#include "tests/library/dll/string_sep_host/library_heap.h"

constinit ATL::CountingManager manager(nullptr);
constinit ATL::CountingManager otherManager(&manager);

namespace {

int failures = 0;

struct Balance {
  int64_t texts = manager.InUse() + otherManager.InUse();
  int64_t strangers = manager.strangers + otherManager.strangers;
  int64_t blocks = HostBlocks() + LibraryBlocks();
};

// The second run is measured: the first one may make what stays.
void RunMeasured(void (*run)()) {
  run();
  const Balance before;
  run();
  const Balance after;
  if (after.texts == before.texts && after.strangers == before.strangers &&
      after.blocks == before.blocks) {
    return;
  }
  ++failures;
  Print("  texts that did not come back to the host's managers: ");
  PrintNumber(after.texts - before.texts);
  Print("; that came to the wrong one: ");
  PrintNumber(after.strangers - before.strangers);
  Print("; blocks that were not given back: ");
  PrintNumber(after.blocks - before.blocks);
  Print("\n");
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
  if (!CountLibraryBlocks()) {
    Print("velquin.dll does not take its memory from the C heap\n");
    return 1;
  }
  const int count = RunAll(resultCases) + RunAll(memoryCases);
  PrintNumber(count);
  Print(" cases, ");
  PrintNumber(manager.given + otherManager.given);
  Print(" texts, ");
  PrintNumber(failures);
  Print(" failures\n");
  return failures == 0 && manager.given > 0 ? 0 : 1;
}
