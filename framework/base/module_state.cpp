// SPDX-License-Identifier: MIT
#include "framework/base/module_state.h"

#include "platform/threads.h"

namespace {

// Both are needed while static objects are still being built, so neither has a constructor order.
constinit AFX_MODULE_STATE staticState;

platform::ThreadSlot* CurrentState() {
  static platform::ThreadSlot* const slot = platform::CreateThreadSlot();
  return slot;
}

}  // namespace

AFX_MODULE_STATE* AfxGetStaticModuleState() {
  return &staticState;
}

AFX_MODULE_STATE* AfxGetModuleState() {
  auto* current = static_cast<AFX_MODULE_STATE*>(platform::GetThreadSlot(CurrentState()));
  return current == nullptr ? &staticState : current;
}

AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state) {
  auto* previous = static_cast<AFX_MODULE_STATE*>(platform::GetThreadSlot(CurrentState()));
  platform::SetThreadSlot(CurrentState(), state);
  return previous;
}
