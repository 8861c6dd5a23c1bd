// SPDX-License-Identifier: MIT
#include "framework/win/instance.h"

#include <atomic>

// The linker's name for the first byte of the module that this code is linked into.
extern "C" IMAGE_DOS_HEADER __ImageBase;

HINSTANCE AfxGetResourceHandle() {
  return reinterpret_cast<HINSTANCE>(&__ImageBase);
}

namespace {

constinit std::atomic<bool> unloading = false;

}  // namespace

void AfxSetUnloading() {
  unloading = true;
}

bool AfxIsUnloading() {
  return unloading;
}
