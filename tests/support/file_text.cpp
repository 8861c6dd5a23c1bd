// SPDX-License-Identifier: MIT
// Whole files as they are on the disk, byte by byte.
#include "tests/support/file_text.h"

#include <fstream>
#include <iterator>

std::optional<std::string> ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  if (!file) return std::nullopt;
  std::string bytes{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  if (file.bad()) return std::nullopt;
  return bytes;
}

void WriteWholeFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream file(path, std::ios::binary | std::ios::trunc);
  file.exceptions(std::ios::failbit | std::ios::badbit);
  file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  file.close();
}
