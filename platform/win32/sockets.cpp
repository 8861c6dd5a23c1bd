// SPDX-License-Identifier: MIT
#include "platform/sockets.h"

#include <winsock2.h>

namespace platform {

static_assert(sizeof(SocketStartupData) == sizeof(WSADATA));
static_assert(sizeof(SocketAddress) == sizeof(sockaddr_in));
static_assert(kInvalidSocket == INVALID_SOCKET && kSocketError == SOCKET_ERROR);
static_assert(kNoAddress == INADDR_NONE);

int StartSockets(uint16_t versionWord, SocketStartupData& data) {
  return WSAStartup(versionWord, reinterpret_cast<WSADATA*>(&data));
}

void StopSockets() {
  WSACleanup();
}

SocketHandle OpenDatagramSocket() {
  return socket(AF_INET, SOCK_DGRAM, 0);
}

int BindSocket(SocketHandle socket, const SocketAddress& address) {
  return bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

uint16_t BoundPort(SocketHandle socket) {
  sockaddr_in bound = {};
  int length = sizeof bound;
  getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &length);
  return ntohs(bound.sin_port);
}

uint32_t AddressFromText(const char* text) {
  return inet_addr(text);
}

bool LookUpHost(const char* name, uint32_t& networkAddress) {
  const hostent* host = gethostbyname(name);
  if (host == nullptr || host->h_addr_list[0] == nullptr) return false;
  networkAddress = reinterpret_cast<const in_addr*>(host->h_addr_list[0])->s_addr;
  return true;
}

SocketAddress MakeAddress(uint32_t networkAddress, uint16_t port) {
  return {AF_INET, htons(port), networkAddress, {}};
}

uint16_t PortOf(const SocketAddress& address) {
  return ntohs(address.portNetworkOrder);
}

int SendDatagram(SocketHandle socket, const char* bytes, int count, const SocketAddress& to) {
  return sendto(socket, bytes, count, 0, reinterpret_cast<const sockaddr*>(&to), sizeof to);
}

ReadWait WaitReadable(SocketHandle socket, const WaitTime& timeOut) {
  fd_set readSet;
  FD_ZERO(&readSet);
  FD_SET(socket, &readSet);
  timeval span = {timeOut.seconds, timeOut.microseconds};
  const int result = select(static_cast<int>(socket) + 1, &readSet, nullptr, nullptr, &span);
  // After an error the set is unchanged, and a read would block.
  return {result, result > 0 && FD_ISSET(socket, &readSet) != 0};
}

int ReceiveDatagram(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender) {
  int length = sizeof(sockaddr_in);
  return recvfrom(socket, bytes, capacity, 0, reinterpret_cast<sockaddr*>(sender),
                  sender == nullptr ? nullptr : &length);
}

void CloseSocket(SocketHandle socket) {
  shutdown(socket, SD_BOTH);
  closesocket(socket);
}

}  // namespace platform
