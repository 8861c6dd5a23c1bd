// SPDX-License-Identifier: MIT
// What a Windows program or library says about itself, read from the file; nothing is loaded.
#include "tests/support/pe_image.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <stdexcept>

#include "tests/support/file_text.h"

namespace {

constexpr uint16_t kPe32Plus = 0x20b;
constexpr size_t kFileHeaderSize = 20;
constexpr size_t kSectionSize = 40;
constexpr size_t kSymbolSize = 18;
constexpr size_t kExportDirectory = 0;
constexpr size_t kImportDirectory = 1;

struct Section {
  uint32_t address;
  uint32_t fileSize;
  uint32_t fileOffset;
};

// Walks the tables of one file. Every access is checked; a wrong one throws std::out_of_range.
class PeReader {
 public:
  explicit PeReader(const std::string& bytes) : bytes_(bytes) {}

  PeImage Read();

 private:
  template <typename Number>
  Number At(size_t offset) const {
    Number number;
    if (offset > bytes_.size() || bytes_.size() - offset < sizeof number) {
      throw std::out_of_range("beyond the end of the file");
    }
    std::memcpy(&number, bytes_.data() + offset, sizeof number);
    return number;
  }

  std::string TextAt(size_t offset) const;
  size_t OffsetOf(uint32_t address) const;
  std::string SectionName(size_t header) const;
  void ReadSections(size_t headers, size_t count);
  void ReadExports(uint32_t directory);
  void ReadImports(uint32_t directory);

  const std::string& bytes_;
  size_t stringTable_ = 0;
  std::vector<Section> sections_;
  PeImage image_;
};

std::string PeReader::TextAt(size_t offset) const {
  const size_t end = bytes_.find('\0', offset);
  if (end == std::string::npos) throw std::out_of_range("text without an end");
  return bytes_.substr(offset, end - offset);
}

size_t PeReader::OffsetOf(uint32_t address) const {
  for (const Section& section : sections_) {
    if (address >= section.address && address - section.address < section.fileSize) {
      return size_t{section.fileOffset} + (address - section.address);
    }
  }
  throw std::out_of_range("address in no section");
}

std::string PeReader::SectionName(size_t header) const {
  At<uint64_t>(header);
  std::string name = bytes_.substr(header, 8);
  name.resize(std::strlen(name.c_str()));
  // "/123" stands for a name of more than 8 characters at that place of the string table.
  if (name.size() > 1 && name[0] == '/') name = TextAt(stringTable_ + std::stoul(name.substr(1)));
  return name;
}

void PeReader::ReadSections(size_t headers, size_t count) {
  for (size_t i = 0; i < count; ++i) {
    const size_t header = headers + i * kSectionSize;
    image_.sectionNames.push_back(SectionName(header));
    sections_.push_back(
        {At<uint32_t>(header + 12), At<uint32_t>(header + 16), At<uint32_t>(header + 20)});
  }
}

void PeReader::ReadExports(uint32_t directory) {
  if (directory == 0) return;
  const size_t table = OffsetOf(directory);
  const auto count = At<uint32_t>(table + 24);
  if (count == 0) return;
  const size_t names = OffsetOf(At<uint32_t>(table + 32));
  for (uint32_t i = 0; i < count; ++i) {
    image_.exportedNames.push_back(TextAt(OffsetOf(At<uint32_t>(names + size_t{4} * i))));
  }
}

void PeReader::ReadImports(uint32_t directory) {
  if (directory == 0) return;
  // 20 bytes a module, the last entry is empty.
  for (size_t entry = OffsetOf(directory);; entry += 20) {
    const auto name = At<uint32_t>(entry + 12);
    if (name == 0) return;
    image_.importedModules.push_back(TextAt(OffsetOf(name)));
  }
}

PeImage PeReader::Read() {
  if (bytes_.compare(0, 2, "MZ") != 0) throw std::out_of_range("no program file");
  const size_t signature = At<uint32_t>(0x3c);
  if (At<uint32_t>(signature) != 0x4550) throw std::out_of_range("no PE file");
  const size_t fileHeader = signature + 4;
  const size_t optionalHeader = fileHeader + kFileHeaderSize;
  if (At<uint16_t>(optionalHeader) != kPe32Plus) throw std::out_of_range("not for 64 bits");

  image_.fileSize = bytes_.size();
  image_.timeStamp = At<uint32_t>(fileHeader + 4);
  image_.symbolCount = At<uint32_t>(fileHeader + 12);
  image_.dllCharacteristics = At<uint16_t>(optionalHeader + 70);
  stringTable_ = At<uint32_t>(fileHeader + 8) + image_.symbolCount * kSymbolSize;
  ReadSections(optionalHeader + At<uint16_t>(fileHeader + 16), At<uint16_t>(fileHeader + 2));

  const size_t directories = optionalHeader + 112;
  ReadExports(At<uint32_t>(directories + 8 * kExportDirectory));
  ReadImports(At<uint32_t>(directories + 8 * kImportDirectory));
  return image_;
}

bool SameText(const std::string& a, const std::string& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](unsigned char x, unsigned char y) {
    return std::tolower(x) == std::tolower(y);
  });
}

}  // namespace

bool PeImage::HasDebugSections() const {
  return std::any_of(sectionNames.begin(), sectionNames.end(), [](const std::string& name) {
    return name.starts_with(".debug") || name.starts_with(".zdebug");
  });
}

bool PeImage::Imports(const std::string& module) const {
  return std::any_of(importedModules.begin(), importedModules.end(),
                     [&](const std::string& name) { return SameText(name, module); });
}

bool PeImage::Exports(const std::string& name) const {
  return std::find(exportedNames.begin(), exportedNames.end(), name) != exportedNames.end();
}

std::optional<PeImage> PeImage::Read(const std::filesystem::path& path) {
  const std::optional<std::string> bytes = ReadWholeFile(path);
  if (!bytes) return std::nullopt;
  return Parse(*bytes);
}

std::optional<PeImage> PeImage::Parse(const std::string& bytes) {
  try {
    return PeReader(bytes).Read();
  } catch (const std::logic_error&) {  // out_of_range, or invalid_argument of a wrong section name
    return std::nullopt;
  }
}
