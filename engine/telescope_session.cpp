// SPDX-License-Identifier: MIT
// Starting, probing and ending a session; the host's thread.
#include <algorithm>
#include <cstring>

#include "engine/telescope.h"
#include "framework/base/exceptions.h"
#include "framework/base/message_box.h"
#include "framework/base/wait_cursor.h"
#include "framework/base/win_app.h"
#include "res/string_ids.h"

namespace {

// Kept by the session and never used: the controller listens on a port of its own.
constexpr int32_t kOpenPort = 80;
constexpr int32_t kOpenArg = 0;

}  // namespace

int CTelescope::Start(HWND ownerWindow, const char* newAddress) {
  if (!BeginSession()) return 0;
  // A probe that runs on another thread finishes first.
  const CSingleLock oneAtATime(sessionLock);
  AttachOwner(ownerWindow);
  address = newAddress;
  const int result = StartThread();
  if (thread == nullptr) {
    UndoStart();
    EndSession();
  }
  return result;
}

int CTelescope::Check(HWND ownerWindow, const char* newAddress, char* version, size_t versionSize,
                      char* extra) {
  if (InSession()) return AnswerCheck(version, versionSize, extra);
  const CSingleLock oneAtATime(sessionLock);
  // A session may have begun while this call waited.
  if (InSession()) return AnswerCheck(version, versionSize, extra);
  AttachOwner(ownerWindow);
  address = newAddress;
  return Probe(version, versionSize, extra);
}

int CTelescope::End() {
  const CSingleLock oneAtATime(sessionLock);
  DetachOwner();
  EndThread();
  EndSession();
  return 1;
}

int CTelescope::OnStart() {
  const CWaitCursor busyPointer;
  const CString newName = Copy(&CTelescope::name);
  if (CWinApp* app = AfxGetApp(); app != nullptr && !newName.IsEmpty()) app->SetAppName(newName);
  if (device.Open(address, kOpenPort, kOpenArg) != 0) {
    if (Handshake() != 0) {
      ReadSiteAndClock();
      ApplyMeridianOverrides();
      const CSingleLock guard(lock);
      connected = 1;
      return 1;
    }
    device.Close();
  }
  AfxMessageBox(kTextNoResponse);
  return 0;
}

int CTelescope::OnEnd() {
  WriteJournal();
  const CSingleLock guard(lock);
  if (connected) {
    connected = 0;
    Enqueue(kCommandClose);
  }
  ShowController(false);
  return 1;
}

bool CTelescope::BeginSession() {
  const CSingleLock guard(lock);
  if (sessionActive) return false;
  sessionActive = true;
  return true;
}

void CTelescope::EndSession() {
  const CSingleLock guard(lock);
  sessionActive = false;
}

bool CTelescope::InSession() {
  const CSingleLock guard(lock);
  return sessionActive;
}

// The controller answered, but the system had no thread to give.
void CTelescope::UndoStart() {
  {
    const CSingleLock guard(lock);
    if (!connected) return;
    connected = 0;
  }
  device.Close();
}

int CTelescope::Probe(char* version, size_t versionSize, char* extra) {
  if (device.Open(address, kOpenPort, kOpenArg) == 0) return 0;
  const int answered = Handshake();
  device.Close();
  return answered == 0 ? 0 : AnswerCheck(version, versionSize, extra);
}

int CTelescope::AnswerCheck(char* version, size_t versionSize, char* extra) {
  const CString text = Copy(&CTelescope::versionText);
  if (text.IsEmpty()) return 0;
  if (version != nullptr && versionSize > 0) {
    const size_t count = std::min(static_cast<size_t>(text.GetLength()), versionSize - 1);
    std::memcpy(version, text.GetString(), count);
    version[count] = '\0';
  }
  if (extra != nullptr) *extra = '\0';
  return 1;
}

int CTelescope::Handshake() {
  CString version;
  CString reply;
  if (device.GetVersion(version, reply) == 0) return 0;
  const CSingleLock guard(lock);
  versionText = version;
  return 1;
}

void CTelescope::WriteJournal() {
  const CString folder = Copy(&CTelescope::logPath);
  const CString prefix = Copy(&CTelescope::logPrefix);
  try {
    device.WriteTimeOutErrors(folder, prefix);
  } catch (const CAtlException&) {
    // A journal that cannot be named must not keep the session from ending.
  }
}
