// SPDX-License-Identifier: MIT
#include "tests/core/net/platform_faults.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "platform/clock.h"
#include "platform/known_folders.h"
#include "platform/user_settings.h"

std::atomic<size_t> PlatformFaults::refusedBytes = 0;
std::atomic<bool> PlatformFaults::timesCannotBeWritten = false;

namespace {

thread_local PlatformFaults* installed = nullptr;

// Calls a stand-in with itself taken away, so that it can ask the system.
template <typename StandIn, typename... Arguments>
auto Ask(const StandIn& standIn, Arguments&&... arguments) {
  struct Restore {
    PlatformFaults* const faults = std::exchange(installed, nullptr);
    ~Restore() { installed = faults; }
  } restore;
  return standIn(std::forward<Arguments>(arguments)...);
}

}  // namespace

PlatformFaults::PlatformFaults() {
  installed = this;
}

PlatformFaults::~PlatformFaults() {
  installed = nullptr;
  refusedBytes = 0;
  timesCannotBeWritten = false;
}

// The linker sends every call of NAME to __wrap_NAME and gives the original the name __real_NAME.
// NAME is the compiler's: it spells types as letters, some of which differ between systems.
#ifdef _WIN32
#define HANDLE "y"
#define INT64 "x"
#define SIZE "y"
#else
#define HANDLE "i"
#define INT64 "l"
#define SIZE "m"
#endif
#define WIDE_STRING "NSt7__cxx1112basic_stringIwSt11char_traitsIwESaIwEEE"
#define SYSTEM(name) __asm__("__real__ZN8platform" name)
#define INSTEAD(name) __asm__("__wrap__ZN8platform" name)

namespace platform {

#define START_SOCKETS "12StartSocketsEtRNS_17SocketStartupDataE"
int SystemStartSockets(uint16_t versionWord, SocketStartupData& data) SYSTEM(START_SOCKETS);
int InsteadStartSockets(uint16_t versionWord, SocketStartupData& data) INSTEAD(START_SOCKETS);
int InsteadStartSockets(uint16_t versionWord, SocketStartupData& data) {
  if (installed == nullptr) return SystemStartSockets(versionWord, data);
  ++installed->socketsStarted;
  installed->versionWord = versionWord;
  if (!installed->startSockets) return SystemStartSockets(versionWord, data);
  return Ask(installed->startSockets, versionWord, data);
}

#define STOP_SOCKETS "11StopSocketsEv"
void SystemStopSockets() SYSTEM(STOP_SOCKETS);
void InsteadStopSockets() INSTEAD(STOP_SOCKETS);
void InsteadStopSockets() {
  if (installed != nullptr) ++installed->socketsStopped;
  SystemStopSockets();
}

#define OPEN_SOCKET "18OpenDatagramSocketEv"
SocketHandle SystemOpenSocket() SYSTEM(OPEN_SOCKET);
SocketHandle InsteadOpenSocket() INSTEAD(OPEN_SOCKET);
SocketHandle InsteadOpenSocket() {
  if (installed == nullptr) return SystemOpenSocket();
  ++installed->socketsOpened;
  return installed->openSocket ? Ask(installed->openSocket) : SystemOpenSocket();
}

#define BIND_SOCKET "10BindSocketE" HANDLE "RKNS_13SocketAddressE"
int SystemBindSocket(SocketHandle socket, const SocketAddress& address) SYSTEM(BIND_SOCKET);
int InsteadBindSocket(SocketHandle socket, const SocketAddress& address) INSTEAD(BIND_SOCKET);
int InsteadBindSocket(SocketHandle socket, const SocketAddress& address) {
  if (installed == nullptr || !installed->bindSocket) return SystemBindSocket(socket, address);
  return Ask(installed->bindSocket, socket, address);
}

#define BOUND_PORT "9BoundPortE" HANDLE
uint16_t SystemBoundPort(SocketHandle socket) SYSTEM(BOUND_PORT);
uint16_t InsteadBoundPort(SocketHandle socket) INSTEAD(BOUND_PORT);
uint16_t InsteadBoundPort(SocketHandle socket) {
  if (installed == nullptr || !installed->boundPort) return SystemBoundPort(socket);
  return Ask(installed->boundPort, socket);
}

#define LOOK_UP_HOST "10LookUpHostEPKcRj"
bool SystemLookUpHost(const char* name, uint32_t& address) SYSTEM(LOOK_UP_HOST);
bool InsteadLookUpHost(const char* name, uint32_t& address) INSTEAD(LOOK_UP_HOST);
bool InsteadLookUpHost(const char* name, uint32_t& address) {
  if (installed == nullptr) return SystemLookUpHost(name, address);
  ++installed->namesLookedUp;
  if (!installed->lookUpHost) return SystemLookUpHost(name, address);
  return Ask(installed->lookUpHost, std::string(name), address);
}

#define SEND_DATAGRAM "12SendDatagramE" HANDLE "PKciRKNS_13SocketAddressE"
int SystemSend(SocketHandle socket, const char* bytes, int count, const SocketAddress& to)
    SYSTEM(SEND_DATAGRAM);
int InsteadSend(SocketHandle socket, const char* bytes, int count, const SocketAddress& to)
    INSTEAD(SEND_DATAGRAM);
int InsteadSend(SocketHandle socket, const char* bytes, int count, const SocketAddress& to) {
  if (installed == nullptr || !installed->send) return SystemSend(socket, bytes, count, to);
  return Ask(installed->send, socket, std::string(bytes, static_cast<size_t>(count)), to);
}

#define WAIT_READABLE "12WaitReadableE" HANDLE "RKNS_8WaitTimeE"
ReadWait SystemWait(SocketHandle socket, const WaitTime& timeOut) SYSTEM(WAIT_READABLE);
ReadWait InsteadWait(SocketHandle socket, const WaitTime& timeOut) INSTEAD(WAIT_READABLE);
ReadWait InsteadWait(SocketHandle socket, const WaitTime& timeOut) {
  if (installed == nullptr || !installed->wait) return SystemWait(socket, timeOut);
  return Ask(installed->wait, socket, timeOut);
}

#define RECEIVE_DATAGRAM "15ReceiveDatagramE" HANDLE "PciPNS_13SocketAddressE"
int SystemReceive(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender)
    SYSTEM(RECEIVE_DATAGRAM);
int InsteadReceive(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender)
    INSTEAD(RECEIVE_DATAGRAM);
int InsteadReceive(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender) {
  if (installed == nullptr || !installed->receive) {
    return SystemReceive(socket, bytes, capacity, sender);
  }
  return Ask(installed->receive, socket, bytes, capacity);
}

#define CLOSE_SOCKET "11CloseSocketE" HANDLE
void SystemCloseSocket(SocketHandle socket) SYSTEM(CLOSE_SOCKET);
void InsteadCloseSocket(SocketHandle socket) INSTEAD(CLOSE_SOCKET);
void InsteadCloseSocket(SocketHandle socket) {
  if (installed != nullptr) ++installed->socketsClosed;
  SystemCloseSocket(socket);
}

#define PROCESS_CLOCK "14ProcessClockMsEv"
int32_t SystemProcessClockMs() SYSTEM(PROCESS_CLOCK);
int32_t InsteadProcessClockMs() INSTEAD(PROCESS_CLOCK);
int32_t InsteadProcessClockMs() {
  if (installed == nullptr || !installed->processClockMs) return SystemProcessClockMs();
  return Ask(installed->processClockMs);
}

#define LOCAL_TIME "9LocalTimeE" INT64 "R2tm"
bool SystemLocalTime(int64_t secondsSince1970, std::tm& local) SYSTEM(LOCAL_TIME);
bool InsteadLocalTime(int64_t secondsSince1970, std::tm& local) INSTEAD(LOCAL_TIME);
bool InsteadLocalTime(int64_t secondsSince1970, std::tm& local) {
  if (installed == nullptr || !installed->localTime) {
    return SystemLocalTime(secondsSince1970, local);
  }
  return Ask(installed->localTime, secondsSince1970, local);
}

#define READ_USER_SETTING "15ReadUserSettingEPKcS1_Pc" SIZE
bool SystemReadUserSetting(const char* key, const char* value, char* buffer, size_t size)
    SYSTEM(READ_USER_SETTING);
bool InsteadReadUserSetting(const char* key, const char* value, char* buffer, size_t size)
    INSTEAD(READ_USER_SETTING);
bool InsteadReadUserSetting(const char* key, const char* value, char* buffer, size_t size) {
  if (installed == nullptr || !installed->userSetting) {
    return SystemReadUserSetting(key, value, buffer, size);
  }
  std::string text;
  if (!Ask(installed->userSetting, key, value, text) || text.size() > size) return false;
  std::copy(text.begin(), text.end(), buffer);
  return true;
}

#define LOCAL_APP_DATA "18LocalAppDataFolderER" WIDE_STRING
bool SystemLocalAppData(std::wstring& folder) SYSTEM(LOCAL_APP_DATA);
bool InsteadLocalAppData(std::wstring& folder) INSTEAD(LOCAL_APP_DATA);
bool InsteadLocalAppData(std::wstring& folder) {
  if (installed == nullptr || !installed->localAppData) return SystemLocalAppData(folder);
  return Ask(installed->localAppData, folder);
}

}  // namespace platform

#ifdef _WIN32
// The runtime is a DLL: its functions are called through pointers, and those are replaced.
#define RUNTIME(function) (*__real___imp_##function)
#else
#define RUNTIME(function) __real_##function
#endif

// No thread_local here: the Windows runtime of the compiler asks malloc for it.
extern "C" {
extern void* RUNTIME(malloc)(size_t bytes);
extern void* RUNTIME(realloc)(void* memory, size_t bytes);
extern size_t RUNTIME(strftime)(char* text, size_t size, const char* format, const std::tm* time);

void* __wrap_malloc(size_t bytes) {
  return bytes != 0 && bytes == PlatformFaults::refusedBytes ? nullptr : RUNTIME(malloc)(bytes);
}

void* __wrap_realloc(void* memory, size_t bytes) {
  return bytes != 0 && bytes == PlatformFaults::refusedBytes ? nullptr
                                                             : RUNTIME(realloc)(memory, bytes);
}

size_t __wrap_strftime(char* text, size_t size, const char* format, const std::tm* time) {
  return PlatformFaults::timesCannotBeWritten ? 0 : RUNTIME(strftime)(text, size, format, time);
}

#ifdef _WIN32
decltype(&malloc) __wrap___imp_malloc = __wrap_malloc;
decltype(&realloc) __wrap___imp_realloc = __wrap_realloc;
decltype(&strftime) __wrap___imp_strftime = __wrap_strftime;
#endif
}
