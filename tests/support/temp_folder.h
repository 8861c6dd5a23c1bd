// SPDX-License-Identifier: MIT
// A folder of a test's own.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// An empty folder with a name that no other test has; deleted with its contents in the end.
class TempFolder {
 public:
  /// @param tail end of the folder's name, for tests of unusual characters
  explicit TempFolder(std::u8string_view tail = u8"");
  ~TempFolder();
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  const std::filesystem::path& Path() const { return path_; }
  std::filesystem::path operator/(const std::filesystem::path& name) const { return path_ / name; }

  /// Full path without a separator at the end. Narrow: in the system's narrow code page, which is
  /// not what path::string() gives on Windows.
  std::string Narrow() const { return NarrowPath(path_); }
  std::wstring Wide() const { return WidePath(path_); }

  /// The same for a file in the folder.
  std::string Narrow(const std::filesystem::path& name) const { return NarrowPath(path_ / name); }
  std::wstring Wide(const std::filesystem::path& name) const { return WidePath(path_ / name); }

  /// @return any path in the system's narrow code page, or in wide characters. Unlike
  /// path::wstring() the latter works in every locale.
  static std::string NarrowPath(const std::filesystem::path& path);
  static std::wstring WidePath(const std::filesystem::path& path);

 private:
  std::filesystem::path path_;
};
