// SPDX-License-Identifier: MIT
// A folder of a test's own.
#include "tests/support/temp_folder.h"

#include <atomic>
#include <stdexcept>
#include <system_error>

#ifdef _WIN32
#include <windows.h>
#else
#include <unistd.h>
#endif

namespace {

std::string ProcessNumber() {
#ifdef _WIN32
  return std::to_string(GetCurrentProcessId());
#else
  return std::to_string(getpid());
#endif
}

}  // namespace

TempFolder::TempFolder(std::u8string_view tail) {
  static std::atomic<unsigned> next{0};
  const std::filesystem::path base = std::filesystem::temp_directory_path();
  // A folder that a killed run with the same process number left behind is passed over.
  for (int attempt = 0; attempt < 1000; ++attempt) {
    path_ = base / ("velquin-test-" + ProcessNumber() + "-" + std::to_string(next++));
    path_ += tail;
    if (std::filesystem::create_directory(path_)) return;
  }
  throw std::runtime_error("no free name for a temporary folder");
}

TempFolder::~TempFolder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::NarrowPath(const std::filesystem::path& path) {
#ifdef _WIN32
  const std::wstring wide = path.wstring();
  const int length = static_cast<int>(wide.size());
  const int size =
      WideCharToMultiByte(CP_ACP, 0, wide.data(), length, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<size_t>(size), '\0');
  WideCharToMultiByte(CP_ACP, 0, wide.data(), length, narrow.data(), size, nullptr, nullptr);
  return narrow;
#else
  return path.string();
#endif
}

std::wstring TempFolder::WidePath(const std::filesystem::path& path) {
#ifdef _WIN32
  return path.wstring();
#else
  const std::u32string wide = path.u32string();
  return {wide.begin(), wide.end()};
#endif
}
