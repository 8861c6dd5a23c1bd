// SPDX-License-Identifier: MIT
// Tells where a test program crashed.
#pragma once

/// From now on a crash or an abort prints the crashed thread's stack to standard error, a line
/// "  at MODULE+0xOFFSET" a frame, before the program ends with its usual exit code.
/// tests/README.md tells how to turn such lines into names. Call once, first thing in main().
/// On systems other than Windows it does nothing: there a debugger or a sanitizer tells more.
void InstallCrashReport();
