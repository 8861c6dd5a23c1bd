// SPDX-License-Identifier: MIT
// How a message is broken into lines and how large it becomes. Measuring is left to the caller, so
// that the rules can be tested without a screen.
#pragma once

#include <functional>

#include "framework/base/cstring.h"
#include "framework/win/geometry.h"

struct MessageText {
  CString text;  ///< with the line breaks that were put in; every line ends with "\n"
  LONG width;    ///< pixels
  LONG
      lines;  ///< lines to make room for; a line that is too long counts as two, however long it is
};

/// The widest a line may become before it is broken.
inline constexpr LONG kMessageLineLimit = 600;  // pixels

/// Lays a message out.
/// @param byteWidth pixels of one byte by itself; a double-byte character counts as two
/// @param minimumWidth pixels
/// @param utf8Width given when the message is in UTF-8, whose bytes have no widths: pixels of one
///        character
MessageText LayOutMessage(const CString& message, const std::function<LONG(char)>& byteWidth,
                          LONG minimumWidth,
                          const std::function<LONG(const CString&)>& utf8Width = nullptr);
