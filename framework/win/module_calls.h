// SPDX-License-Identifier: MIT
// Calls of the system into the module, on the threads that have its windows. Whoever unloads the
// module from another thread has to let them return first: they would come back into a gap.
#pragma once

#include "framework/win/windows_base.h"

class CWnd;

/// Stands in every function that the system calls on a window's thread.
class CModuleCall {
 public:
  CModuleCall();
  ~CModuleCall();
  CModuleCall(const CModuleCall&) = delete;
  CModuleCall& operator=(const CModuleCall&) = delete;
};

/// Deletes an object of a window when no call can be using it any more: at once, but while the
/// module is being unloaded only in AfxLetCallsReturn. Any thread.
void AfxDeleteObject(CWnd* object);

/// Waits until every call has returned, then deletes the objects that were kept back; for the
/// thread that unloads the module, with no lock held. Takes no time when nothing was kept back.
/// @param timeoutMs how long to wait at most. A call that waits for the thread which unloads would
///                  never return; the objects then stay.
void AfxLetCallsReturn(DWORD timeoutMs);
