// SPDX-License-Identifier: MIT
// The library's module state: the application object, and so the name and texts, that are current
// while one of its functions runs. Current per thread, for the length of a call. Differences from
// the documented mechanism: there is only the library's state, and it also applies to a thread
// without a current state.
#pragma once

class CWinApp;

struct AFX_MODULE_STATE {
  CWinApp* m_pCurrentWinApp = nullptr;  ///< set by the application object's constructor
};

/// The library's state.
AFX_MODULE_STATE* AfxGetStaticModuleState();
/// The state that is current on this thread.
AFX_MODULE_STATE* AfxGetModuleState();
/// Makes a state current on this thread. @return the previous one, null if there was none.
AFX_MODULE_STATE* AfxSetModuleState(AFX_MODULE_STATE* state);

/// Makes a state current until the end of the block, on every path.
class AFX_MAINTAIN_STATE2 {
 public:
  explicit AFX_MAINTAIN_STATE2(AFX_MODULE_STATE* state) : m_previous(AfxSetModuleState(state)) {}
  ~AFX_MAINTAIN_STATE2() { AfxSetModuleState(m_previous); }
  AFX_MAINTAIN_STATE2(const AFX_MAINTAIN_STATE2&) = delete;
  AFX_MAINTAIN_STATE2& operator=(const AFX_MAINTAIN_STATE2&) = delete;

 private:
  AFX_MODULE_STATE* m_previous;
};

#define AFX_MANAGE_STATE(state) const AFX_MAINTAIN_STATE2 moduleStateOfThisCall(state)
