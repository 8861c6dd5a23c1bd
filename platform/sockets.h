// SPDX-License-Identifier: MIT
// The seam to the system's IPv4 datagram sockets. Free functions over the system's own types, so
// that a caller keeps the documented meaning of each call; bodies in win32/ and posix/.
// Any thread; a socket is used by one thread at a time.
#pragma once

#include <cstdint>

namespace platform {

#ifdef _WIN32
using SocketHandle = uintptr_t;
#else
using SocketHandle = int;
#endif
/// No socket (all ones, as the system's INVALID_SOCKET).
inline constexpr SocketHandle kInvalidSocket = static_cast<SocketHandle>(-1);

/// What starting the sockets fills in (WSADATA on Windows); the driver never looks at it.
struct SocketStartupData {
  alignas(8) unsigned char bytes[408];
};

/// An IPv4 socket address, laid out as the system's sockaddr_in.
struct SocketAddress {
  uint16_t family = 0;
  uint16_t portNetworkOrder = 0;
  uint32_t addressNetworkOrder = 0;
  uint8_t zero[8] = {};
};

/// A time span as select takes it.
struct WaitTime {
  int32_t seconds;
  int32_t microseconds;
};

/// The address text was no dotted IPv4 address (all ones, as inet_addr answers).
inline constexpr uint32_t kNoAddress = 0xFFFFFFFFu;
/// A send or receive failed.
inline constexpr int kSocketError = -1;

/// What a bounded wait saw.
struct ReadWait {
  int result;   ///< the system's select: 0 nothing in time, negative an error, else ready sockets
  bool marked;  ///< the socket can be read without waiting; false after an error, whatever it was
};

/// Starts the system's sockets. @param versionWord minor version in the high byte, major in the
/// low one. @return 0 on success, else the system's error number.
int StartSockets(uint16_t versionWord, SocketStartupData& data);
/// Undoes one successful StartSockets.
void StopSockets();

/// @return a new IPv4 datagram socket, or kInvalidSocket.
SocketHandle OpenDatagramSocket();
/// Binds to an address; port 0 lets the system choose. @return negative on failure.
int BindSocket(SocketHandle socket, const SocketAddress& address);
/// @return the port the socket is bound to, host order; 0 when it cannot be told.
uint16_t BoundPort(SocketHandle socket);
/// @param text dotted IPv4 address. @return network byte order, or kNoAddress.
uint32_t AddressFromText(const char* text);
/// Looks a host name up. @return true and the first IPv4 address (network order) when there is one.
bool LookUpHost(const char* name, uint32_t& networkAddress);
/// @return an address record of the family IPv4. @param port host order.
SocketAddress MakeAddress(uint32_t networkAddress, uint16_t port);
/// @return the port of an address record, host order.
uint16_t PortOf(const SocketAddress& address);

/// @return bytes sent, or kSocketError.
int SendDatagram(SocketHandle socket, const char* bytes, int count, const SocketAddress& to);
/// Waits until the socket can be read or the time-out is over.
ReadWait WaitReadable(SocketHandle socket, const WaitTime& timeOut);
/// Reads one datagram, cut to `capacity` bytes where the system cuts. @param sender may be null.
/// @return bytes read (0 for an empty datagram), or kSocketError.
int ReceiveDatagram(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender);
/// Shuts both directions down and gives the socket back.
void CloseSocket(SocketHandle socket);

}  // namespace platform
