// SPDX-License-Identifier: MIT
#include "framework/win/module_calls.h"

#include <atomic>

#include "framework/win/instance.h"
#include "framework/win/wnd.h"

namespace {

// A call counts from shortly after it enters until shortly before it leaves.
constexpr DWORD kEdgesMs = 20;

constinit std::atomic<int> calls = 0;
constinit std::atomic<CWnd*> keptBack = nullptr;

bool WaitUntilNoneIsLeft(DWORD timeoutMs) {
  const ULONGLONG end = ::GetTickCount64() + timeoutMs;
  for (;;) {
    if (calls == 0) ::Sleep(kEdgesMs);
    if (calls == 0) return true;
    if (::GetTickCount64() >= end) return false;
    ::Sleep(1);
  }
}

}  // namespace

CModuleCall::CModuleCall() {
  ++calls;
}

CModuleCall::~CModuleCall() {
  --calls;
}

void AfxDeleteObject(CWnd* object) {
  if (!AfxIsUnloading()) {
    delete object;
    return;
  }
  object->m_nextKeptBack = keptBack;
  while (!keptBack.compare_exchange_weak(object->m_nextKeptBack, object)) {
  }
}

void AfxLetCallsReturn(DWORD timeoutMs) {
  if (keptBack == nullptr || !WaitUntilNoneIsLeft(timeoutMs)) return;
  CWnd* object = keptBack.exchange(nullptr);
  while (object != nullptr) {
    CWnd* const next = object->m_nextKeptBack;
    delete object;
    object = next;
  }
}
