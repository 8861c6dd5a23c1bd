// SPDX-License-Identifier: MIT
// Calls of the system into the module, on the threads that own its windows. A thread that unloads
// the module must first let these calls return: otherwise they would return into unmapped code.
#pragma once

#include "framework/win/windows_base.h"

class CWnd;

/// Put one in every function that the system calls on a window's thread.
class CModuleCall {
 public:
  CModuleCall();
  ~CModuleCall();
  CModuleCall(const CModuleCall&) = delete;
  CModuleCall& operator=(const CModuleCall&) = delete;
};

/// Deletes an object of a window when no call can use it any more: at once, or, while the module is
/// being unloaded, in AfxLetCallsReturn. Any thread.
void AfxDeleteObject(CWnd* object);

/// Waits until every call has returned, then deletes the objects that were kept. Call it on the
/// thread that unloads the module, with no lock held. Takes no time if no object was kept.
/// @param timeoutMs maximum wait, milliseconds. A call that waits for the unloading thread never
///         returns; the objects then remain.
void AfxLetCallsReturn(DWORD timeoutMs);
