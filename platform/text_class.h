// SPDX-License-Identifier: MIT
// The seam to the runtime library's character classes. Any thread.
#pragma once

namespace platform {

/// Tells whether a code is alphanumeric in the process's multibyte code page.
/// @param code a byte as a sign-extended char, so bytes from 0x80 on arrive as negative numbers,
///        which are no character of any code page
bool IsMultibyteAlnum(int code);

}  // namespace platform
