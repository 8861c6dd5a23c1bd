// SPDX-License-Identifier: MIT
// How a message is broken into lines, and the size of the result. The caller measures the text, so
// that tests of these rules need no screen.
#pragma once

#include <functional>

#include "framework/base/cstring.h"
#include "framework/win/geometry.h"

struct MessageText {
  CString text;  ///< with the inserted line breaks; every line ends with "\n"
  LONG width;    ///< pixels
  LONG lines;    ///< lines to reserve; a line that is too long counts as two, at any length
};

/// The maximum width of a line; longer lines are broken.
inline constexpr LONG kMessageLineLimit = 600;  // pixels

/// Lays out a message.
/// @param byteWidth pixels of a single byte; a double-byte character counts as two
/// @param minimumWidth pixels
/// @param utf8Width for a message in UTF-8, whose bytes have no widths: pixels of one character
MessageText LayOutMessage(const CString& message, const std::function<LONG(char)>& byteWidth,
                          LONG minimumWidth,
                          const std::function<LONG(const CString&)>& utf8Width = nullptr);
