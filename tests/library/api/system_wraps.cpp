// SPDX-License-Identifier: MIT
#include "tests/library/api/system_wraps.h"

#include <cstdlib>

#include "framework/base/win_app.h"
#include "library/engine/telescope.h"
#include "library/ui/shared_brushes.h"
#include "platform/sockets.h"

namespace {

// Used while static objects are built and destroyed, so none of these has a constructor.
constinit bool noSockets = false;
constinit int socketUsers = 0;
constinit bool sawFirstStart = false;
constinit bool hadAppAtFirst = false;
constinit bool hadBrushesAtLastStop = false;
constinit int endCode = 0;  // 0: goes on
constinit int endCodeWithApp = 0;

std::function<int()>& GetStatusBody() {
  static std::function<int()> body;
  return body;
}

}  // namespace

namespace system_wraps {

NoSockets::NoSockets() {
  noSockets = true;
}

NoSockets::~NoSockets() {
  noSockets = false;
}

int SocketUsers() {
  return socketUsers;
}

bool HadBrushesAtLastStop() {
  return hadBrushesAtLastStop;
}

bool HadAppAtFirst() {
  return hadAppAtFirst;
}

void EndWhenTheEngineGoes(int code) {
  endCode = code;
}

void EndWhenAppOutlivesTheEngine(int code) {
  endCodeWithApp = code;
}

void SetGetStatus(std::function<int()> body) {
  GetStatusBody() = std::move(body);
}

}  // namespace system_wraps

// The linker's names: __wrap_ is called by the code under test, __real_ is the real function.
extern "C" {

int __real__ZN8platform12StartSocketsEtRNS_17SocketStartupDataE(uint16_t,
                                                                platform::SocketStartupData&);
int __wrap__ZN8platform12StartSocketsEtRNS_17SocketStartupDataE(uint16_t version,
                                                                platform::SocketStartupData& data) {
  if (!sawFirstStart) hadAppAtFirst = AfxGetApp() != nullptr;
  sawFirstStart = true;
  constexpr int kSystemNotReady = 10091;
  if (noSockets) return kSystemNotReady;
  ++socketUsers;
  return __real__ZN8platform12StartSocketsEtRNS_17SocketStartupDataE(version, data);
}

void __real__ZN8platform11StopSocketsEv();
void __wrap__ZN8platform11StopSocketsEv() {
  if (endCode != 0) std::_Exit(endCode);
  if (endCodeWithApp != 0 && AfxGetApp() != nullptr) std::_Exit(endCodeWithApp);
  hadBrushesAtLastStop = GetSharedBrushes().dark != nullptr || GetSharedBrushes().black != nullptr;
  --socketUsers;
  __real__ZN8platform11StopSocketsEv();
}

int __real__ZN10CTelescope9GetStatusEv(CTelescope*);
int __wrap__ZN10CTelescope9GetStatusEv(CTelescope* engine) {
  return GetStatusBody() ? GetStatusBody()() : __real__ZN10CTelescope9GetStatusEv(engine);
}

}  // extern "C"
