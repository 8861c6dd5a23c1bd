// SPDX-License-Identifier: MIT
// What velquinctl tells the shell. Documented in its --help; scripts rely on the numbers.
#pragma once

namespace velquinctl {

enum class ExitCode {
  kDone = 0,
  kMountFailed = 1,      ///< no answer, refused, or not finished in time
  kWrongUsage = 2,       ///< wrong arguments or a wrong script line; nothing was sent
  kLibraryUnusable = 3,  ///< velquin.dll is missing, cannot be loaded or lacks an export
  kInterrupted = 130,    ///< Ctrl-C
};

}  // namespace velquinctl
