// SPDX-License-Identifier: MIT
#include "tests/fuzz/corpus_file.h"

#include <fstream>
#include <stdexcept>

namespace {

std::string Unescaped(const std::string& line) {
  std::string bytes;
  for (size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\\') {
      bytes += line[i];
      continue;
    }
    if (line.compare(i, 2, "\\x") != 0 || i + 4 > line.size()) {
      throw std::runtime_error("not an escaped byte: " + line.substr(i, 4));
    }
    bytes += static_cast<char>(std::stoi(line.substr(i + 2, 2), nullptr, 16));
    i += 3;
  }
  return bytes;
}

}  // namespace

std::vector<std::string> ReadCorpusFile(const std::string& path) {
  std::ifstream file(path);
  if (!file) throw std::runtime_error("cannot be read: " + path);
  std::vector<std::string> inputs;
  for (std::string line; std::getline(file, line);) inputs.push_back(Unescaped(line));
  return inputs;
}
