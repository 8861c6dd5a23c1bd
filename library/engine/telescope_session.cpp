// SPDX-License-Identifier: MIT
// Starting, probing and ending a session; the host's thread.
#include <algorithm>
#include <cstring>

#include "framework/base/message_box.h"
#include "framework/base/wait_cursor.h"
#include "framework/base/win_app.h"
#include "library/engine/telescope.h"
#include "res/string_ids.h"

namespace {

// Counts the host's threads inside Start, Check and End.
class CHostCall {
 public:
  explicit CHostCall(std::atomic<int32_t>& count) : m_count(count) { ++m_count; }
  ~CHostCall() { --m_count; }
  CHostCall(const CHostCall&) = delete;
  CHostCall& operator=(const CHostCall&) = delete;

 private:
  std::atomic<int32_t>& m_count;
};

// Closes the link after a failed attempt to connect: the controller did not answer, or an exchange
// ran out of memory. An open link would stay bound to that address, and a host that corrects the
// address could never connect.
class CLinkCloser {
 public:
  explicit CLinkCloser(CVQCtrlW& device) : m_device(&device) {}
  ~CLinkCloser() {
    if (m_device != nullptr) m_device->Close();
  }
  CLinkCloser(const CLinkCloser&) = delete;
  CLinkCloser& operator=(const CLinkCloser&) = delete;

  void LeaveOpen() { m_device = nullptr; }

 private:
  CVQCtrlW* m_device;
};

// Stored by the session and never used: the controller listens on a fixed port.
constexpr int32_t kOpenPort = 80;
constexpr int32_t kOpenArg = 0;

// Copies a version to the caller of a check, unless it is empty.
int AnswerCheck(const CString& text, char* version, size_t versionSize, char* extra) {
  if (text.IsEmpty()) return 0;
  if (version != nullptr && versionSize > 0) {
    const size_t count = std::min(static_cast<size_t>(text.GetLength()), versionSize - 1);
    std::memcpy(version, text.GetString(), count);
    version[count] = '\0';
  }
  if (extra != nullptr) *extra = '\0';
  return 1;
}

}  // namespace

int CTelescope::Start(HWND ownerWindow, const char* newAddress) {
  const CHostCall call(hostCalls);
  if (!BeginSession()) return 0;
  // A probe or an end on another thread finishes first.
  const CSingleLock oneAtATime(sessionLock);
  if (thread != nullptr) return 0;
  MarkSession(true);
  int result = 0;
  try {
    AttachOwner(ownerWindow);
    address = newAddress;
    result = StartThread();
  } catch (...) {
    // Out of memory: nothing was started, and the state must say so for the next attempt.
    result = 0;
  }
  if (thread == nullptr) {
    UndoStart();
    MarkSession(false);
  }
  return result;
}

int CTelescope::Check(HWND ownerWindow, const char* newAddress, char* version, size_t versionSize,
                      char* extra) {
  const CHostCall call(hostCalls);
  CString text;
  if (InSession(text)) return AnswerCheck(text, version, versionSize, extra);
  const CSingleLock oneAtATime(sessionLock);
  // A session may have begun while this call waited.
  if (InSession(text)) return AnswerCheck(text, version, versionSize, extra);
  AttachOwner(ownerWindow);
  address = newAddress;
  return Probe(version, versionSize, extra);
}

int CTelescope::End() {
  const CHostCall call(hostCalls);
  const CSingleLock oneAtATime(sessionLock);
  DetachOwner();
  EndThread();
  MarkSession(false);
  return 1;
}

int CTelescope::OnStart() {
  const CWaitCursor busyPointer;
  const CString newName = Copy(&CTelescope::name);
  if (CWinApp* app = AfxGetApp(); app != nullptr && !newName.IsEmpty()) app->SetAppName(newName);
  {
    CLinkCloser closer(device);
    CString version;
    if (device.Open(address, kOpenPort, kOpenArg) != 0 && Handshake(version) != 0) {
      StoreSessionVersion(version);
      ReadSiteAndClock();
      ApplyMeridianOverrides();
      closer.LeaveOpen();
      const CSingleLock guard(lock);
      connected = 1;
      return 1;
    }
  }
  AfxMessageBox(kTextNoResponse);
  return 0;
}

int CTelescope::OnEnd() {
  WriteJournal();
  const CSingleLock guard(lock);
  if (connected) {
    Enqueue(kCommandClose);
    connected = 0;
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

void CTelescope::MarkSession(bool active) {
  const CSingleLock guard(lock);
  sessionActive = active;
  sessionVersion.Empty();
}

// One lock for both: otherwise the version could belong to a session that began in between.
bool CTelescope::InSession(CString& version) {
  const CSingleLock guard(lock);
  version = sessionVersion;
  return sessionActive;
}

void CTelescope::StoreSessionVersion(const CString& version) {
  const CSingleLock guard(lock);
  sessionVersion = version;
}

// The controller answered, but the system could not create a thread.
void CTelescope::UndoStart() {
  {
    const CSingleLock guard(lock);
    if (!connected) return;
    connected = 0;
  }
  device.Close();
}

int CTelescope::Probe(char* version, size_t versionSize, char* extra) {
  // A local text: to other checks, a start that waits for this probe already is a session.
  CString text;
  {
    const CLinkCloser closer(device);
    if (device.Open(address, kOpenPort, kOpenArg) == 0 || Handshake(text) == 0) return 0;
  }
  return AnswerCheck(text, version, versionSize, extra);
}

int CTelescope::Handshake(CString& version) {
  CString reply;
  if (device.GetVersion(version, reply) == 0) return 0;
  const CSingleLock guard(lock);
  versionText = version;
  return 1;
}

void CTelescope::WriteJournal() {
  try {
    const CString folder = Copy(&CTelescope::logPath);
    const CString prefix = Copy(&CTelescope::logPrefix);
    device.WriteTimeOutErrors(folder, prefix);
  } catch (...) {
    // No local time for the file name, or no memory: neither may keep the session from ending.
  }
}
