// SPDX-License-Identifier: MIT
// Conversions between UTF-8, wide texts and the system's narrow code page.
#include "console/text_encoding.h"

#include <windows.h>

#include "console/failure.h"

namespace velquinctl {
namespace {

std::wstring WideFrom(UINT codePage, std::string_view text) {
  const int count =
      MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
  std::wstring wide(static_cast<size_t>(count), L'\0');
  MultiByteToWideChar(codePage, 0, text.data(), static_cast<int>(text.size()), wide.data(), count);
  return wide;
}

/// @param lost set when the code page lacks one of the characters; null when none can be lacking
std::string NarrowFrom(UINT codePage, std::wstring_view text, BOOL* lost) {
  const DWORD flags = lost != nullptr ? WC_NO_BEST_FIT_CHARS : 0;
  const int count = WideCharToMultiByte(codePage, flags, text.data(), static_cast<int>(text.size()),
                                        nullptr, 0, nullptr, lost);
  std::string narrow(static_cast<size_t>(count), '\0');
  WideCharToMultiByte(codePage, flags, text.data(), static_cast<int>(text.size()), narrow.data(),
                      count, nullptr, lost);
  return narrow;
}

}  // namespace

std::wstring WideFromUtf8(std::string_view text) {
  return WideFrom(CP_UTF8, text);
}

std::string Utf8FromWide(std::wstring_view text) {
  return NarrowFrom(CP_UTF8, text, nullptr);
}

std::optional<std::string> NarrowFromWide(unsigned codePage, std::wstring_view text) {
  // UTF-8 has every character, and asking whether it lacked one is an error.
  const bool isUtf8 = codePage == CP_UTF8 || (codePage == CP_ACP && GetACP() == CP_UTF8);
  if (isUtf8) return Utf8FromWide(text);
  BOOL lost = FALSE;
  std::string narrow = NarrowFrom(codePage, text, &lost);
  if (lost) return {};
  return narrow;
}

std::string SystemFromUtf8(const std::string& what, std::string_view text) {
  const auto narrow = NarrowFromWide(CP_ACP, WideFromUtf8(text));
  if (!narrow) {
    throw Failure(
        ExitCode::kWrongUsage,
        what + ": \"" + std::string(text) + "\" has characters that this system's code page lacks");
  }
  return *narrow;
}

std::string Utf8FromSystem(std::string_view text) {
  return Utf8FromWide(WideFrom(CP_ACP, text));
}

}  // namespace velquinctl
