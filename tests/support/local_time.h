// SPDX-License-Identifier: MIT
// The local clock by the C library's means, for comparison with what the product shows.
#pragma once

#include <ctime>

/// @return what the local clock shows at a time. Any thread.
inline std::tm LocalTimeAt(std::time_t time) {
  std::tm local = {};
#ifdef _WIN32
  localtime_s(&local, &time);
#else
  localtime_r(&time, &local);
#endif
  return local;
}
