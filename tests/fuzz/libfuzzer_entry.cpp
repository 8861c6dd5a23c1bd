// SPDX-License-Identifier: MIT
// What libFuzzer calls; FUZZ_TARGET is one of the functions of targets.h.
#include <cstdio>
#include <cstdlib>

#include "tests/fuzz/require.h"
#include "tests/fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* bytes, size_t count) {
  try {
    FUZZ_TARGET(FuzzInput(bytes, count));
  } catch (const BrokenProperty& broken) {
    std::fprintf(stderr, "broken property: %s\n", broken.what());
    std::abort();
  }
  return 0;
}
