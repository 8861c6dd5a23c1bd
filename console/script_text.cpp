// SPDX-License-Identifier: MIT
#include "console/script_text.h"

#include <cstddef>
#include <cstdint>

#include "console/failure.h"

namespace velquinctl {
namespace {

constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kLittleEndianMark = "\xFF\xFE";
constexpr std::string_view kBigEndianMark = "\xFE\xFF";

constexpr uint32_t kFirstHighSurrogate = 0xD800;
constexpr uint32_t kFirstLowSurrogate = 0xDC00;
constexpr uint32_t kBehindSurrogates = 0xE000;
constexpr uint32_t kFirstSupplementary = 0x10000;
constexpr uint32_t kLastCharacter = 0x10FFFF;

void AppendUtf8(std::string& text, uint32_t character) {
  const auto rest = [character](int shift) {
    return static_cast<char>(0x80 | (character >> shift & 0x3F));
  };
  if (character < 0x80) {
    text += static_cast<char>(character);
  } else if (character < 0x800) {
    text += {static_cast<char>(0xC0 | character >> 6), rest(0)};
  } else if (character < kFirstSupplementary) {
    text += {static_cast<char>(0xE0 | character >> 12), rest(6), rest(0)};
  } else {
    text += {static_cast<char>(0xF0 | character >> 18), rest(12), rest(6), rest(0)};
  }
}

/// The 16-bit units of a text.
struct Utf16Units {
  std::string_view bytes;
  bool bigEndian;

  size_t Count() const { return bytes.size() / 2; }
  uint32_t At(size_t index) const {
    const auto first = static_cast<unsigned char>(bytes[2 * index]);
    const auto second = static_cast<unsigned char>(bytes[2 * index + 1]);
    return bigEndian ? first << 8 | second : second << 8 | first;
  }
};

/// @return false when the text is cut off or has half of a character.
bool AppendUtf16(std::string& text, const Utf16Units& units) {
  for (size_t i = 0; i < units.Count(); ++i) {
    uint32_t character = units.At(i);
    if (character >= kFirstLowSurrogate && character < kBehindSurrogates) return false;
    if (character >= kFirstHighSurrogate && character < kFirstLowSurrogate) {
      if (++i == units.Count()) return false;
      const uint32_t low = units.At(i);
      if (low < kFirstLowSurrogate || low >= kBehindSurrogates) return false;
      character = kFirstSupplementary + ((character - kFirstHighSurrogate) << 10) +
                  (low - kFirstLowSurrogate);
    }
    AppendUtf8(text, character);
  }
  return units.bytes.size() % 2 == 0;
}

/// @return the length of the valid character at the beginning of a text; 0 when there is none.
size_t CharacterLength(std::string_view text) {
  const auto first = static_cast<unsigned char>(text[0]);
  if (first < 0x80) return 1;
  const size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
  if (first < 0xC0 || first >= 0xF8 || length > text.size()) return 0;
  uint32_t character = first & (0xFFu >> (length + 1));
  for (size_t i = 1; i < length; ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if ((byte & 0xC0) != 0x80) return 0;
    character = character << 6 | (byte & 0x3F);
  }
  const uint32_t least = length == 2 ? 0x80 : length == 3 ? 0x800 : kFirstSupplementary;
  const bool surrogate = character >= kFirstHighSurrogate && character < kBehindSurrogates;
  return character < least || character > kLastCharacter || surrogate ? 0 : length;
}

}  // namespace

std::string ScriptText(std::string_view bytes, const std::string& fileName) {
  std::string text;
  const bool bigEndian = bytes.starts_with(kBigEndianMark);
  if (bigEndian || bytes.starts_with(kLittleEndianMark)) {
    if (!AppendUtf16(text, {bytes.substr(kLittleEndianMark.size()), bigEndian}))
      throw Failure(ExitCode::kWrongUsage, fileName + ": not valid UTF-16 (save it as UTF-8)");
  } else {
    text = bytes.substr(bytes.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
  }
  if (text.find('\0') != std::string::npos)
    throw Failure(ExitCode::kWrongUsage, fileName + ": not a text file (save it as UTF-8)");
  return text;
}

bool IsUtf8(std::string_view text) {
  while (!text.empty()) {
    const size_t length = CharacterLength(text);
    if (length == 0) return false;
    text.remove_prefix(length);
  }
  return true;
}

}  // namespace velquinctl
