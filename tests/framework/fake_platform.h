// SPDX-License-Identifier: MIT
// Stands in for what the framework asks of the system: failures on demand, and a record of what
// was asked. CMakeLists.txt wraps the functions at link time.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// Takes effect while it lives; without one the system itself answers. One at a time.
class FakePlatform {
 public:
  FakePlatform();
  ~FakePlatform();
  FakePlatform(const FakePlatform&) = delete;
  FakePlatform& operator=(const FakePlatform&) = delete;

  struct Box {
    std::string text;
    std::string title;
    uint32_t type;
  };

  // Message boxes are kept instead of shown.
  std::vector<Box> boxes;
  int pressedButton = 1;

  // Sockets are counted instead of started.
  int socketStartResult = 0;
  std::vector<uint16_t> startedVersions;
  int socketStops = 0;

  // The busy pointer is counted; `pointer` is what was shown before.
  int busyPointers = 0;
  void* pointer = nullptr;
  std::vector<void*> restoredPointers;

  std::optional<uint32_t> lockError;  ///< set: a lock cannot be had, with this system error
  bool noThreads = false;             ///< a thread cannot be begun
};
