// SPDX-License-Identifier: MIT
#include "library/ui/caption_text.h"

CString CutCaption(const CString& text, LONG limit,
                   const std::function<LONG(const CString&)>& width) {
  if (width(text) <= limit) return text;
  CString fitting;
  // Characters of UTF-8 would be taken apart; but captions are cut up to Windows 7 only, where no
  // program has UTF-8 as its code page.
  for (int end = 0; end < text.GetLength();) {
    end += ::IsDBCSLeadByte(static_cast<BYTE>(text.GetAt(end))) ? 2 : 1;
    const CString candidate = text.Left(end) + "...";
    if (width(candidate) > limit) return fitting;
    fitting = candidate;
  }
  return fitting;
}
