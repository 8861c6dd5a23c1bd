// SPDX-License-Identifier: MIT
// Files on which every write fails for lack of room.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

/// Links in a folder that lead to a device that is always full, gone again with the object. Wine
/// follows such links, but it is this machine's own shell that makes them. The folder must outlive
/// the object.
class FullDevice {
 public:
  /// Throws std::runtime_error when the links do not appear.
  /// @param names of plain characters; a file that is there is replaced
  FullDevice(const std::filesystem::path& folder, const std::vector<std::string>& names);
  ~FullDevice();
  FullDevice(const FullDevice&) = delete;
  FullDevice& operator=(const FullDevice&) = delete;

 private:
  bool AreThere() const;

  std::filesystem::path folder_;
  std::vector<std::string> names_;
  std::string goThere_;  // the beginning of each of the shell's commands
};

/// @return how many devices this process has open. A file that is closed is none of them, whoever
/// opened it. Throws std::runtime_error when the system gives no answer.
int CountOpenDevices();
