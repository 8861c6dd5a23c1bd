// SPDX-License-Identifier: MIT
// What texts and numbers of replies mean, by the runtime library of this machine.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// @return the number that a text begins with as atof reads it, but without words ("inf") and
///         hexadecimal ones.
double ModelDouble(const std::string& text);
/// @return as atol with 32 bits reads it.
int32_t ModelInt(const std::string& text);
/// @return true for equal numbers, 0.0 and -0.0 apart.
bool SameNumber(double a, double b);

/// @return without white space (of the C locale) at both ends.
std::string ModelTrimmed(const std::string& text);
/// @return the fields of a text between separators: trimmed, no empty last one, of the separator
///         only the first character skipped, nothing found behind a NUL.
std::vector<std::string> ModelFields(std::string text, const std::string& separator);
/// @return whether the texts up to their first NUL are equal, the case of ASCII letters aside.
bool ModelSame(const std::string& a, const std::string& b);
/// @return the text up to its first NUL.
std::string UpToNul(const std::string& text);
