// SPDX-License-Identifier: MIT
#include "framework/base/module_state.h"

#include "platform/threads.h"

namespace {

// Needed while other static objects are still being built, so it has no constructor.
constinit AFX_MODULE_STATE staticState;

// The current state of each thread. Null before its owner below is built and after it is destroyed;
// the static state then applies. Not a local static: its guard would take a second slot of the
// process at every load and never release it.
constinit platform::ThreadSlot* currentState = nullptr;

// Takes one of the process's few slots at load and releases it at unload.
struct CurrentStateOwner {
  CurrentStateOwner() { currentState = platform::CreateThreadSlot(); }
  ~CurrentStateOwner() {
    platform::DestroyThreadSlot(currentState);
    currentState = nullptr;
  }
};
const CurrentStateOwner currentStateOwner;

}  // namespace

AFX_MODULE_STATE* AfxGetStaticModuleState() {
  return &staticState;
}

AFX_MODULE_STATE* AfxGetModuleState() {
  if (currentState == nullptr) return &staticState;
  auto* current = static_cast<AFX_MODULE_STATE*>(platform::GetThreadSlot(currentState));
  return current == nullptr ? &staticState : current;
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) {
  if (currentState == nullptr) return nullptr;
  auto* previous = static_cast<AFX_MODULE_STATE*>(platform::GetThreadSlot(currentState));
  platform::SetThreadSlot(currentState, state);
  return previous;
}
