// SPDX-License-Identifier: MIT
// Reads what the code under test writes to the debugger output.
#pragma once

#include <string>
#include <vector>

/// Collects from construction to the end. One at a time; any thread may write.
class DebugOutputCapture {
 public:
  DebugOutputCapture();
  ~DebugOutputCapture();
  DebugOutputCapture(const DebugOutputCapture&) = delete;
  DebugOutputCapture& operator=(const DebugOutputCapture&) = delete;

  /// Ends the collection. @return all that was written, in order.
  std::string Take();

 private:
  bool collecting = true;
  [[maybe_unused]] void* handler = nullptr;  // the system's, on Windows
};
