// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/file_size_limit.h"

#include <windows.h>

#include <chrono>
#include <stdexcept>

#include "tests/library/bad_calls/machine_shell.h"
#include "tests/support/eventually.h"

namespace {

constexpr std::chrono::seconds kSoon{20};

/// @return how many of so many bytes have room in a new file.
uint64_t Fitting(uint64_t bytes) {
  const std::filesystem::path path = SmallDisk::Path() / L"probe";
  HANDLE file = CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                            FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (file == INVALID_HANDLE_VALUE) return 0;
  const std::string text(bytes, 'x');
  DWORD written = 0;
  const BOOL any = WriteFile(file, text.data(), static_cast<DWORD>(bytes), &written, nullptr);
  CloseHandle(file);
  return any ? written : 0;
}

}  // namespace

FileSizeLimit::~FileSizeLimit() {
  Set("unlimited", limit_ + 1, limit_ + 1);
}

void FileSizeLimit::LeaveRoom(uint64_t bytes) {
  limit_ = bytes;
  if (!Set(std::to_string(bytes), bytes + 1, bytes)) {
    throw std::runtime_error(
        "the size of files cannot be limited; run this through with-own-limits");
  }
}

void FileSizeLimit::MakeRoom() {
  if (!Set("unlimited", limit_ + 1, limit_ + 1)) {
    throw std::runtime_error("the limit cannot be lifted");
  }
}

bool FileSizeLimit::Set(const std::string& limit, uint64_t probe, uint64_t fitting) const {
  // The colon: the lower of the two limits, which may be raised again.
  return StartShell("prlimit --pid " + machineProcess_ + " --fsize=" + limit + ":") &&
         Eventually([&] { return Fitting(probe) == fitting; }, kSoon);
}
