// SPDX-License-Identifier: MIT
// What a Windows program or library says about itself, read from the file; nothing is loaded.
#pragma once

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// A 64-bit PE file's tables. A plain value; may be used from any thread.
struct PeImage {
  std::vector<std::string> importedModules;  ///< as written in the file, in its order
  std::vector<std::string> exportedNames;    ///< in the file's order, which is alphabetical
  std::vector<std::string> sectionNames;     ///< long names in full (".debug_info")
  uint32_t symbolCount = 0;                  ///< entries of the symbol table; 0 when stripped
  uint16_t dllCharacteristics = 0;           ///< IMAGE_DLLCHARACTERISTICS_... flags
  uint32_t timeStamp = 0;                    ///< 0 in a reproducible build
  uint64_t fileSize = 0;                     ///< bytes

  bool HasSymbols() const { return symbolCount != 0; }
  bool HasDebugSections() const;
  bool Imports(const std::string& module) const;  ///< without regard to case
  bool Exports(const std::string& name) const;

  /// @return nothing when the file cannot be read or is no well-formed 64-bit PE file
  static std::optional<PeImage> Read(const std::filesystem::path& path);

  /// The same for a file's bytes.
  static std::optional<PeImage> Parse(const std::string& bytes);
};
