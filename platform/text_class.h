// SPDX-License-Identifier: MIT
// Operating-system seam: the runtime library's character classes. Any thread.
#pragma once

namespace platform {

/// @return whether a code is alphanumeric in the process's multibyte code page.
/// @param code a byte as a sign-extended char: bytes of 0x80 and more are negative numbers, which
///         are not characters of any code page
bool IsMultibyteAlnum(int code);

/// Compares case-insensitively, character by character of the process's multibyte code page.
/// @return negative, 0 or positive.
int CompareTextNoCase(const char* first, const char* second);

/// @return the first occurrence that starts at the start of a character, or null.
const char* FindText(const char* text, const char* part);

}  // namespace platform
