// SPDX-License-Identifier: MIT
#include "tests/library/bad_calls/mounted_disk.h"

#include <windows.h>

#include <stdexcept>
#include <string>
#include <system_error>

#include "tests/support/file_text.h"

namespace {

constexpr uint64_t kDiskBytes = 1024 * 1024;

std::filesystem::path Filler() {
  return SmallDisk::Path() / L"filler";
}

uint64_t Room() {
  const std::filesystem::path disk = SmallDisk::Path();
  ULARGE_INTEGER room = {};
  if (!GetDiskFreeSpaceExW(disk.c_str(), &room, nullptr, nullptr)) {
    throw std::runtime_error("the system does not tell how much room there is");
  }
  return room.QuadPart;
}

}  // namespace

MountedDisk::MountedDisk() {
  if (Room() > kDiskBytes) throw std::runtime_error("run this through with-small-disk");
}

MountedDisk::~MountedDisk() {
  std::error_code ignored;
  std::filesystem::remove(Filler(), ignored);
}

void MountedDisk::LeaveRoom(uint64_t bytes) {
  const uint64_t room = Room();
  if (room < bytes) throw std::runtime_error("there is less room already");
  if (room > bytes) WriteWholeFile(Filler(), std::string(room - bytes, 'x'));
  if (Room() != bytes) throw std::runtime_error("the disk cannot be filled that far");
}

void MountedDisk::MakeRoom() {
  if (!std::filesystem::remove(Filler())) throw std::runtime_error("nothing fills the disk");
}
