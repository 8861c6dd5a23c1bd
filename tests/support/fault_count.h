// SPDX-License-Identifier: MIT
// Counts this process's faults: access violations, illegal instructions and the like, on whichever
// thread. One inside a window procedure goes unnoticed otherwise: the system goes on without the
// message.
#pragma once

#include <string>

struct Faults {
  int count = 0;
  std::string last;  ///< where: "MODULE+0xOFFSET"; tests/README.md tells how to turn it into a name
};

/// From now on faults are counted. Call once, first thing in main(); every test program does, and a
/// test during which there was one has failed; after the last test, the program has. On systems
/// other than Windows there are none: a fault ends the program there.
void CountFaults();
/// From now on a fault ends this process, which may be on its way out already, with an exit code.
/// For programs that tests run.
void EndAtFaults(int code);
/// @return the faults since the last call. Any thread.
Faults TakeFaults();
