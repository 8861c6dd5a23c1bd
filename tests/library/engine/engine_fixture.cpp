// SPDX-License-Identifier: MIT
#include "tests/library/engine/engine_fixture.h"

#include <utility>

// Here and not in the header, because every kind of call would be compiled anew, for a third of a
// second each.
std::future<int> EngineTest::Meanwhile(std::function<int()> call) {
  return std::async(std::launch::async, std::move(call));
}
