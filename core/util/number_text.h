// SPDX-License-Identifier: MIT
// Text to numbers as the runtime library's atof and atol do it, but with "." as decimal point
// whatever locale the host has chosen. Pure functions: any thread.
#pragma once

#include <cstdint>

#include "core/util/text_span.h"

/// Takes leading white space, a sign and as many characters as make a decimal number; a word
/// ("inf", "nan") is none.
/// @return the number; 0.0 when there is none, infinity or 0.0 beyond the range of a double.
double TextToDouble(const char* text);
/// The same for a piece of a text, which need not end with a NUL.
double TextToDouble(TextSpan text);

/// Takes leading white space, a sign and decimal digits up to the first other character.
/// @return the number, held within the 32-bit range; 0 when there is none.
int32_t TextToInt(const char* text);
/// The same for a piece of a text, which need not end with a NUL.
int32_t TextToInt(TextSpan text);
