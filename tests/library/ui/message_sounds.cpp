// SPDX-License-Identifier: MIT
// Stands in for the system's MessageBeep: the linker lets the library's calls come here.
#include "tests/library/ui/message_sounds.h"

#include <mutex>
#include <utility>

namespace ui_test {
namespace {

std::mutex lock;
std::vector<UINT> sounds;

BOOL WINAPI KeepSound(UINT kind) {
  const std::lock_guard guard(lock);
  sounds.push_back(kind);
  return TRUE;
}

}  // namespace

std::vector<UINT> TakeSounds() {
  const std::lock_guard guard(lock);
  return std::exchange(sounds, {});
}

}  // namespace ui_test

extern "C" {
extern BOOL(WINAPI* __wrap___imp_MessageBeep)(UINT);
BOOL(WINAPI* __wrap___imp_MessageBeep)(UINT) = &ui_test::KeepSound;
}
