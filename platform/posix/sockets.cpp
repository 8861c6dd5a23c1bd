// SPDX-License-Identifier: MIT
#include "platform/sockets.h"

#include <arpa/inet.h>
#include <netdb.h>
#include <netinet/in.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include <cstring>

namespace platform {

static_assert(sizeof(SocketAddress) == sizeof(sockaddr_in));
static_assert(kNoAddress == INADDR_NONE);

// POSIX sockets need no start-up; the pair exists so that callers look the same on all systems.
int StartSockets(uint16_t, SocketStartupData&) {
  return 0;
}

void StopSockets() {}

SocketHandle OpenDatagramSocket() {
  return socket(AF_INET, SOCK_DGRAM, 0);
}

int BindSocket(SocketHandle socket, const SocketAddress& address) {
  return bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

uint16_t BoundPort(SocketHandle socket) {
  sockaddr_in bound = {};
  socklen_t length = sizeof bound;
  getsockname(socket, reinterpret_cast<sockaddr*>(&bound), &length);
  return ntohs(bound.sin_port);
}

uint32_t AddressFromText(const char* text) {
  return inet_addr(text);
}

bool LookUpHost(const char* name, uint32_t& networkAddress) {
  addrinfo hints = {};
  hints.ai_family = AF_INET;
  hints.ai_socktype = SOCK_DGRAM;
  addrinfo* found = nullptr;
  if (getaddrinfo(name, nullptr, &hints, &found) != 0) return false;
  networkAddress = reinterpret_cast<const sockaddr_in*>(found->ai_addr)->sin_addr.s_addr;
  freeaddrinfo(found);
  return true;
}

SocketAddress MakeAddress(uint32_t networkAddress, uint16_t port) {
  return {AF_INET, htons(port), networkAddress, {}};
}

uint16_t PortOf(const SocketAddress& address) {
  return ntohs(address.portNetworkOrder);
}

int SendDatagram(SocketHandle socket, const char* bytes, int count, const SocketAddress& to) {
  return static_cast<int>(sendto(socket, bytes, static_cast<size_t>(count), 0,
                                 reinterpret_cast<const sockaddr*>(&to), sizeof to));
}

ReadWait WaitReadable(SocketHandle socket, const WaitTime& timeOut) {
  // FD_SET writes outside its set for descriptors beyond its size.
  if (socket < 0 || socket >= FD_SETSIZE) return {kSocketError, false};
  fd_set readSet;
  FD_ZERO(&readSet);
  FD_SET(socket, &readSet);
  timeval left = {timeOut.seconds, timeOut.microseconds};
  const int result = select(socket + 1, &readSet, nullptr, nullptr, &left);
  // After an error the set is unchanged, and a read would block.
  return {result, result > 0 && FD_ISSET(socket, &readSet)};
}

int ReceiveDatagram(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender) {
  socklen_t length = sizeof(sockaddr_in);
  return static_cast<int>(recvfrom(socket, bytes, static_cast<size_t>(capacity), 0,
                                   reinterpret_cast<sockaddr*>(sender),
                                   sender == nullptr ? nullptr : &length));
}

void CloseSocket(SocketHandle socket) {
  shutdown(socket, SHUT_RDWR);
  close(socket);
}

}  // namespace platform
