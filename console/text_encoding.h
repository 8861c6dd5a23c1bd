// SPDX-License-Identifier: MIT
// velquinctl keeps every text in UTF-8; Windows wants wide texts, and the driver's exports want the
// system's narrow code page. Any thread.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace velquinctl {

std::wstring WideFromUtf8(std::string_view text);
std::string Utf8FromWide(std::wstring_view text);

/// @param codePage a number of Windows, for example CP_ACP
/// @return the text in that code page; nothing when it lacks one of the characters
std::optional<std::string> NarrowFromWide(unsigned codePage, std::wstring_view text);

/// @param what how the message calls the text, for example "--name"
/// @throws Failure with kWrongUsage when the code page lacks one of the characters
std::string SystemFromUtf8(const std::string& what, std::string_view text);
std::string Utf8FromSystem(std::string_view text);

}  // namespace velquinctl
