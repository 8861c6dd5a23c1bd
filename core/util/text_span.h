// SPDX-License-Identifier: MIT
// TextSpan: a part of a text, in place. Plain data, owns nothing; any thread.
#pragma once

/// The characters from `first` up to, but not including, `last`.
struct TextSpan {
  const char* first = nullptr;
  const char* last = nullptr;
};

/// @return whether the runtime library counts a character as white space, in every locale.
inline bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

/// @return the span without white space at its ends.
inline TextSpan Trimmed(TextSpan span) {
  while (span.first < span.last && IsSpace(*span.first)) ++span.first;
  while (span.last > span.first && IsSpace(span.last[-1])) --span.last;
  return span;
}
