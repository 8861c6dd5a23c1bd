// SPDX-License-Identifier: MIT
// printf-style formatting into a string. Any thread.
#pragma once

#include <string>

namespace simulator {

/// @param format with plain printf conversions; the result may have any length
__attribute__((format(printf, 1, 2))) std::string Formatted(const char* format, ...);

}  // namespace simulator
