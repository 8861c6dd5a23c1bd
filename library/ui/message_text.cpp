// SPDX-License-Identifier: MIT
#include "library/ui/message_text.h"

#include <algorithm>

namespace {

// @return the number of bytes of the character that begins at a position of a text
int BytesOfCharacter(const CString& text, int at, bool isUtf8) {
  if (!isUtf8) return ::IsDBCSLeadByte(static_cast<BYTE>(text.GetAt(at))) ? 2 : 1;
  int end = at + 1;
  while ((text.GetAt(end) & 0xC0) == 0x80) ++end;  // stops at the NUL at the latest
  return end - at;
}

// Breaks one line before each character at which its running width exceeds the limit.
// @param total the width of the unbroken line
CString BreakLine(const CString& line, const std::function<LONG(char)>& byteWidth,
                  const std::function<LONG(const CString&)>& utf8Width, LONG& total) {
  CString broken;
  LONG running = 0;
  total = 0;
  for (int i = 0; i < line.GetLength();) {
    const int bytes = BytesOfCharacter(line, i, utf8Width != nullptr);
    const CString character = line.Mid(i, bytes);
    bool breaks = false;
    const auto add = [&](LONG width) {
      total += width;
      running += width;
      if (running <= kMessageLineLimit) return;
      breaks = true;
      running = 0;  // not this width: each piece begins as if it were empty
    };
    if (utf8Width != nullptr) {
      add(utf8Width(character));
    } else {
      // A double-byte character is measured as two single bytes.
      for (int b = 0; b < character.GetLength(); ++b) add(byteWidth(character.GetAt(b)));
    }
    if (breaks) broken += "\n";
    broken += character;
    i += bytes;
  }
  return broken;
}

}  // namespace

MessageText LayOutMessage(const CString& message, const std::function<LONG(char)>& byteWidth,
                          LONG minimumWidth, const std::function<LONG(const CString&)>& utf8Width) {
  MessageText result = {};
  LONG widest = 0;
  LONG longLines = 0;
  for (int start = 0; start <= message.GetLength();) {
    const int found = message.Find("\n", start);
    const int end = found < 0 ? message.GetLength() : found;
    LONG total = 0;
    CString line = BreakLine(message.Mid(start, end - start), byteWidth, utf8Width, total);
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
