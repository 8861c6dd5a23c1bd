// SPDX-License-Identifier: MIT
// A private folder for the driver's time-out journal of one session: nobody else writes there, and
// nothing of it is left. Owned by a session; one thread.
#pragma once

#include <optional>
#include <string>

namespace velquinctl {

class JournalFolder {
 public:
  /// The driver begins the file's name with this.
  static constexpr const char* kPrefix = "velquinctl";

  /// Makes it in the user's folder for temporary files.
  JournalFolder();
  JournalFolder(const JournalFolder&) = delete;
  JournalFolder& operator=(const JournalFolder&) = delete;
  /// Removes it with what is in it.
  ~JournalFolder();

  /// @return the folder in the system's code page with a separator at its end, as the driver wants
  ///         it; empty when there is none.
  const std::string& SystemPath() const { return systemPath_; }

  /// @return the newest journal, empty when the driver had nothing to write; nothing when the
  /// folder
  ///         cannot be written, so that a missing file proves nothing.
  std::optional<std::string> Read() const;

  /// Hands the newest journal, if there is one, to the user, under the name the driver gave it.
  /// @param folder UTF-8 @param prefix of the file's name, in place of kPrefix
  /// @return false when it cannot be written there.
  bool CopyTo(const std::string& folder, const std::string& prefix) const;

 private:
  std::wstring NewestFile() const;

  std::wstring path_;  // with a separator at its end; empty when it could not be made
  std::string systemPath_;
};

/// Removes a folder and the files in it; for the thread that ends the program at once, too.
/// @param path with a separator at its end
void RemoveFolderAtOnce(const wchar_t* path);

/// @return the folder that a JournalFolder has now, or null. Any thread.
const wchar_t* JournalFolderInUse();

}  // namespace velquinctl
