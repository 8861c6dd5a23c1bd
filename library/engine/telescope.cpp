// SPDX-License-Identifier: MIT
// The engine's construction, its stored texts and flags, and its window.
#include "library/engine/telescope.h"

CTelescope::CTelescope() {
  CTelescope::OnReset();
}

CTelescope::~CTelescope() {
  // This comes first: a window that closes reads the engine once more.
  controllerDialog.reset();
}

void CTelescope::OnReset() {
  const CSingleLock guard(lock);
  CommandQueue.RemoveAll();
  position[0] = position[1] = -1.0;
  processFlag = busy = connected = slewing = operating = eastWest = targetValid = 0;
  PollFailCount = 0;
  handSpeed = handEast = handWest = handNorth = handSouth = 0;
  guideRateA = guideRateB = pulseRateA = pulseRateB = 1.0;
  spare = 0;
  for (int32_t& ms : pulseMs) ms = 0;
  vendor.Empty();
  name.Empty();
}

int CTelescope::GetPos(double* radec) {
  const CSingleLock guard(lock);
  radec[0] = position[0];
  radec[1] = position[1];
  constexpr int32_t kLostPolls = 10;
  if (PollFailCount > kLostPolls) return 0;
  return position[0] >= 0.0 ? 1 : 0;
}

int CTelescope::GetParking() {
  return Read(&CTelescope::operating);
}

int CTelescope::GetStatus() {
  Lock();
  Unlock();
  return 1;
}

int CTelescope::GetBusy() {
  return Read(&CTelescope::busy);
}

int CTelescope::GetConnected() {
  return Read(&CTelescope::connected);
}

int CTelescope::GetSlewing() {
  return Read(&CTelescope::slewing);
}

int CTelescope::GetTargetValid() {
  return Read(&CTelescope::targetValid);
}

int CTelescope::SetIni(const char* file, const char* section) {
  Store(&CTelescope::iniFile, file);
  return Store(&CTelescope::iniSection, section);
}

int CTelescope::ShowController(bool show) {
  ReplaceController(nullptr);
  if (!show || windowFactory == nullptr) return 1;
  // Not under the lock: opening the window may need other threads to answer messages.
  ReplaceController(std::unique_ptr<IControllerWindow>(
      windowFactory(*this, Copy(&CTelescope::vendor), Copy(&CTelescope::name), OwnerWindow())));
  return 1;
}

// The old window closes after the exchange, so that no two threads close it.
void CTelescope::ReplaceController(std::unique_ptr<IControllerWindow> window) {
  Lock();
  controllerDialog.swap(window);
  Unlock();
}

CString CTelescope::Copy(CString CTelescope::* text) {
  const CSingleLock guard(lock);
  return this->*text;
}

int CTelescope::Store(CString CTelescope::* text, const char* value) {
  const CSingleLock guard(lock);
  this->*text = value;
  return 1;
}

int CTelescope::Read(int32_t CTelescope::* flag) {
  const CSingleLock guard(lock);
  return this->*flag;
}
