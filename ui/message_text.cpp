// SPDX-License-Identifier: MIT
#include "ui/message_text.h"

#include <algorithm>

namespace {

// Breaks one line before each character at which its running width passes the limit.
// @param total its unbroken width
CString BreakLine(const CString& line, const std::function<LONG(char)>& byteWidth, LONG& total) {
  CString broken;
  LONG running = 0;
  total = 0;
  for (int i = 0; i < line.GetLength();) {
    const int bytes = ::IsDBCSLeadByte(static_cast<BYTE>(line.GetAt(i))) ? 2 : 1;
    const CString character = line.Mid(i, bytes);
    bool breaks = false;
    // A double-byte character is measured as two single bytes.
    for (int b = 0; b < character.GetLength(); ++b) {
      const LONG width = byteWidth(character.GetAt(b));
      total += width;
      running += width;
      if (running <= kMessageLineLimit) continue;
      breaks = true;
      running = 0;  // not this byte's width: a piece begins as if it were empty
    }
    if (breaks) broken += "\n";
    broken += character;
    i += bytes;
  }
  return broken;
}

}  // namespace

MessageText LayOutMessage(const CString& message, const std::function<LONG(char)>& byteWidth,
                          LONG minimumWidth) {
  MessageText result = {};
  LONG widest = 0;
  LONG longLines = 0;
  for (int start = 0; start <= message.GetLength();) {
    const int found = message.Find("\n", start);
    const int end = found < 0 ? message.GetLength() : found;
    LONG total = 0;
    CString line = BreakLine(message.Mid(start, end - start), byteWidth, total);
    line.Remove('\r');
    result.text += line + "\n";
    widest = std::max(widest, total);
    longLines += total > kMessageLineLimit ? 1 : 0;
    ++result.lines;
    start = end + 1;
  }
  result.width = widest > kMessageLineLimit ? kMessageLineLimit : std::max(widest, minimumWidth);
  result.lines += longLines;
  return result;
}
