// SPDX-License-Identifier: MIT
// The seam to the runtime library's character classes. Any thread.
#pragma once

namespace platform {

/// Tells whether a code is alphanumeric in the process's multibyte code page.
/// @param code a byte as a sign-extended char, so bytes from 0x80 on arrive as negative numbers,
///        which are no character of any code page
bool IsMultibyteAlnum(int code);

/// Compares without regard to case, character by character of the process's multibyte code page.
/// @return negative, 0 or positive.
int CompareTextNoCase(const char* first, const char* second);

/// @return the first occurrence that begins with a whole character, or null.
const char* FindText(const char* text, const char* part);

}  // namespace platform
