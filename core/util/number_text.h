// SPDX-License-Identifier: MIT
// Text to numbers as the runtime library's atof and atol do it, but with "." as decimal point in
// every locale of the host. Pure functions: any thread.
#pragma once

#include <cstdint>

#include "core/util/text_span.h"

/// Reads leading white space, a sign and the longest decimal number that follows. The words "inf"
/// and "nan" are not numbers.
/// @return the number; 0.0 if there is none, infinity or 0.0 beyond the range of a double.
double TextToDouble(const char* text);
/// The same for a part of a text, which need not end with a NUL.
double TextToDouble(TextSpan text);

/// Reads leading white space, a sign and decimal digits up to the first other character.
/// @return the number, clamped to the 32-bit range; 0 if there is none.
int32_t TextToInt(const char* text);
/// The same for a part of a text, which need not end with a NUL.
int32_t TextToInt(TextSpan text);
