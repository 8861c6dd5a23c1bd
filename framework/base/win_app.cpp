// SPDX-License-Identifier: MIT
#include "framework/base/win_app.h"

#include <cstdlib>
#include <cstring>

#include "framework/base/message_box.h"
#include "framework/base/module_state.h"
#include "platform/sockets.h"
#include "platform/user_notice.h"

namespace {

constexpr UINT kAppTitleId = 57344;
constexpr UINT kIconBits = 0xF0;

}  // namespace

CWinApp::CWinApp(LPCSTR appName) {
  if (appName != nullptr) SetAppName(appName);
  AfxGetModuleState()->m_pCurrentWinApp = this;
}

CWinApp::~CWinApp() {
  AFX_MODULE_STATE* state = AfxGetModuleState();
  if (state->m_pCurrentWinApp == this) state->m_pCurrentWinApp = nullptr;
  std::free(const_cast<char*>(m_pszAppName));
}

BOOL CWinApp::InitInstance() {
  return TRUE;
}

int CWinApp::ExitInstance() {
  if (m_socketsStarted) platform::StopSockets();
  m_socketsStarted = false;
  return 0;
}

int CWinApp::DoMessageBox(LPCSTR prompt, UINT type, UINT) {
  // A box without an icon gets the exclamation mark.
  const UINT shown = (type & kIconBits) == 0 ? type | MB_ICONEXCLAMATION : type;
  return platform::ShowMessageBox(prompt, AppName(), shown);
}

void CWinApp::SetCurrentHandles() {
  CString title;
  const CSingleLock guard(m_nameLock);
  if (m_pszAppName == nullptr && title.LoadString(kAppTitleId)) SetAppName(title);
}

void CWinApp::SetAppName(LPCSTR appName) {
  const size_t size = std::strlen(appName) + 1;
  auto* copy = static_cast<char*>(std::malloc(size));
  if (copy == nullptr) return;
  std::memcpy(copy, appName, size);
  const CSingleLock guard(m_nameLock);
  std::free(const_cast<char*>(m_pszAppName));
  m_pszAppName = copy;
}

CString CWinApp::AppName() const {
  const CSingleLock guard(m_nameLock);
  return CString(m_pszAppName);
}

CWinApp* AfxGetApp() {
  return AfxGetModuleState()->m_pCurrentWinApp;
}

BOOL AfxSocketInit() {
  constexpr uint16_t kVersion22 = 0x0202;
  platform::SocketStartupData data = {};
  if (platform::StartSockets(kVersion22, data) != 0) return FALSE;
  if (CWinApp* app = AfxGetApp(); app != nullptr) app->m_socketsStarted = true;
  return TRUE;
}
