// SPDX-License-Identifier: MIT
// The seam to what the system itself shows a person: message boxes, the busy pointer, and the
// texts of the library's string table.
#pragma once

#include <cstddef>
#include <cstdint>

namespace platform {

/// Shows the system's message box and waits for the answer. Any thread; blocks the calling one.
/// @param text, title in the system code page
/// @param type the documented message-box style bits
/// @return the number of the pressed button (1 OK, 2 cancel, 6 yes, 7 no ...). Where there is no
///         desktop (the native build) the text goes to standard error and the answer is 1.
int ShowMessageBox(const char* text, const char* title, uint32_t type);

/// Shows the busy pointer. @return the pointer shown before, for RestorePointer.
void* ShowBusyPointer();
void RestorePointer(void* previous);

/// Copies a string of the string table of the module that holds this code, in the system code
/// page, cut to `size` - 1 bytes and ended by NUL.
/// @return its length in bytes; 0 when there is no such string.
int LoadStringResource(uint32_t id, char* buffer, size_t size);

}  // namespace platform
