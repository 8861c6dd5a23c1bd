// SPDX-License-Identifier: MIT
// The native build of crash_report.h: nothing to install.
#include "tests/support/crash_report.h"

void InstallCrashReport() {}
