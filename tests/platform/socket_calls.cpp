// SPDX-License-Identifier: MIT
#include "tests/platform/socket_calls.h"

namespace {

SocketCalls* installed = nullptr;

}  // namespace

SocketCalls::SocketCalls() {
  installed = this;
}

SocketCalls::~SocketCalls() {
  installed = nullptr;
}

#ifdef _WIN32

#include <winsock2.h>

#include <deque>

// The linker puts these pointers in the place of the imported functions'.
extern "C" {
extern decltype(&shutdown) __real___imp_shutdown;
extern decltype(&closesocket) __real___imp_closesocket;
extern decltype(&getsockname) __real___imp_getsockname;
extern decltype(&gethostbyname) __real___imp_gethostbyname;
}

namespace {

int WSAAPI Shutdown(SOCKET socket, int how) {
  if (installed != nullptr) {
    installed->closing.push_back(how == SD_BOTH ? "shutdown both" : "shutdown in part");
  }
  return __real___imp_shutdown(socket, how);
}

int WSAAPI Close(SOCKET socket) {
  if (installed != nullptr) installed->closing.push_back("close");
  return __real___imp_closesocket(socket);
}

int WSAAPI BoundAddress(SOCKET socket, sockaddr* address, int* length) {
  if (installed != nullptr && installed->boundAddressIsUnknown) return SOCKET_ERROR;
  return __real___imp_getsockname(socket, address, length);
}

// The system keeps the record, as it does with its own.
hostent* WSAAPI HostByName(const char* name) {
  if (installed == nullptr || installed->addressesOfEveryName.empty()) {
    return __real___imp_gethostbyname(name);
  }
  static std::deque<in_addr> addresses;
  static std::vector<char*> list;
  static hostent host;
  addresses.clear();
  list.clear();
  for (const std::string& text : installed->addressesOfEveryName) {
    addresses.emplace_back().s_addr = inet_addr(text.c_str());
    list.push_back(reinterpret_cast<char*>(&addresses.back()));
  }
  list.push_back(nullptr);
  host = {nullptr, nullptr, AF_INET, sizeof(in_addr), list.data()};
  return &host;
}

}  // namespace

extern "C" {
decltype(&shutdown) __wrap___imp_shutdown = Shutdown;
decltype(&closesocket) __wrap___imp_closesocket = Close;
decltype(&getsockname) __wrap___imp_getsockname = BoundAddress;
decltype(&gethostbyname) __wrap___imp_gethostbyname = HostByName;
}

#else

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <memory>

namespace {

struct AddressRecord {
  addrinfo info = {};
  sockaddr_in address = {};
};

// Owned by the caller, who gives it back with freeaddrinfo.
addrinfo* NewList(const std::vector<std::string>& texts) {
  addrinfo* list = nullptr;
  for (auto text = texts.rbegin(); text != texts.rend(); ++text) {
    AddressRecord* record = std::make_unique<AddressRecord>().release();
    record->address.sin_family = AF_INET;
    record->address.sin_addr.s_addr = inet_addr(text->c_str());
    record->info.ai_family = AF_INET;
    record->info.ai_addr = reinterpret_cast<sockaddr*>(&record->address);
    record->info.ai_addrlen = sizeof record->address;
    record->info.ai_next = list;
    list = &record->info;
  }
  return list;
}

void DeleteList(addrinfo* list) {
  while (list != nullptr) {
    const std::unique_ptr<AddressRecord> record(reinterpret_cast<AddressRecord*>(list));
    list = list->ai_next;
  }
}

}  // namespace

extern "C" {

int __real_shutdown(int socket, int how);
int __wrap_shutdown(int socket, int how);
int __wrap_shutdown(int socket, int how) {
  if (installed != nullptr) {
    installed->closing.push_back(how == SHUT_RDWR ? "shutdown both" : "shutdown in part");
  }
  return __real_shutdown(socket, how);
}

int __real_close(int socket);
int __wrap_close(int socket);
int __wrap_close(int socket) {
  if (installed != nullptr) installed->closing.push_back("close");
  return __real_close(socket);
}

int __real_getsockname(int socket, sockaddr* address, socklen_t* length);
int __wrap_getsockname(int socket, sockaddr* address, socklen_t* length);
int __wrap_getsockname(int socket, sockaddr* address, socklen_t* length) {
  if (installed != nullptr && installed->boundAddressIsUnknown) return -1;
  return __real_getsockname(socket, address, length);
}

int __real_getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                       addrinfo** found);
int __wrap_getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                       addrinfo** found);
int __wrap_getaddrinfo(const char* name, const char* service, const addrinfo* hints,
                       addrinfo** found) {
  if (installed == nullptr || installed->addressesOfEveryName.empty()) {
    return __real_getaddrinfo(name, service, hints, found);
  }
  ++installed->listsHeld;
  *found = NewList(installed->addressesOfEveryName);
  return 0;
}

void __real_freeaddrinfo(addrinfo* list);
void __wrap_freeaddrinfo(addrinfo* list);
void __wrap_freeaddrinfo(addrinfo* list) {
  if (installed == nullptr || installed->addressesOfEveryName.empty()) {
    __real_freeaddrinfo(list);
    return;
  }
  --installed->listsHeld;
  DeleteList(list);
}

}  // extern "C"

#endif
