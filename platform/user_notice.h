// SPDX-License-Identifier: MIT
// Operating-system seam: what the system shows to the user: message boxes, the busy pointer, and
// the texts of the library's string table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// Shows the system's message box and waits for the answer. Any thread; blocks the calling one.
/// @param text, title in the system code page
/// @param type the documented message-box style bits
/// @return the number of the pressed button (1 OK, 2 cancel, 6 yes, 7 no ...). Without a desktop
///         (the native build) the text goes to standard error and the result is 1.
int ShowMessageBox(const char* text, const char* title, uint32_t type);

/// Shows the busy pointer. @return the previous pointer, for RestorePointer.
void* ShowBusyPointer();
void RestorePointer(void* previous);

/// Copies a string from the string table of the module that holds this code, in the system code
/// page, cut to `size` - 1 bytes and terminated by NUL.
/// @return its length in bytes; 0 if there is no such string.
int LoadStringResource(uint32_t id, char* buffer, size_t size);

}  // namespace platform
