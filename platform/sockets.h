// SPDX-License-Identifier: MIT
// Operating-system seam: IPv4 datagram sockets. Free functions over the system's own types, so that
// each call keeps its documented meaning; implementations in win32/ and posix/. Any thread; a
// socket is used by one thread at a time.
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

/// Filled in when the sockets start (WSADATA on Windows); the driver does not read it.
struct SocketStartupData {
  alignas(8) unsigned char bytes[408];
};

/// An IPv4 socket address with the layout of the system's sockaddr_in.
struct SocketAddress {
  uint16_t family = 0;
  uint16_t portNetworkOrder = 0;
  uint32_t addressNetworkOrder = 0;
  uint8_t zero[8] = {};
};

/// A time span in the format of select.
struct WaitTime {
  int32_t seconds;
  int32_t microseconds;
};

/// The address text was not a dotted IPv4 address (all ones, as inet_addr returns).
inline constexpr uint32_t kNoAddress = 0xFFFFFFFFu;
/// A send or receive failed.
inline constexpr int kSocketError = -1;

/// The result of a bounded wait.
struct ReadWait {
  int result;   ///< of select: 0 at the time-out, negative on error, else number of ready sockets
  bool marked;  ///< the socket can be read without waiting; false after every error
};

/// Starts the system's sockets. @param versionWord minor version in the high byte, major version in
/// the low byte. @return 0 on success, else the system's error number.
int StartSockets(uint16_t versionWord, SocketStartupData& data);
/// Undoes one successful StartSockets.
void StopSockets();

/// @return a new IPv4 datagram socket, or kInvalidSocket.
SocketHandle OpenDatagramSocket();
/// Binds to an address; port 0 lets the system choose. @return negative on failure.
int BindSocket(SocketHandle socket, const SocketAddress& address);
/// @return the port the socket is bound to, host order; 0 if it is unknown.
uint16_t BoundPort(SocketHandle socket);
/// @param text dotted IPv4 address. @return network byte order, or kNoAddress.
uint32_t AddressFromText(const char* text);
/// Looks up a host name. @return true and the first IPv4 address (network order) if there is one.
bool LookUpHost(const char* name, uint32_t& networkAddress);
/// @return an address record of the family IPv4. @param port host order.
SocketAddress MakeAddress(uint32_t networkAddress, uint16_t port);
/// @return the port of an address record, host order.
uint16_t PortOf(const SocketAddress& address);

/// @return the number of bytes sent, or kSocketError.
int SendDatagram(SocketHandle socket, const char* bytes, int count, const SocketAddress& to);
/// Waits until the socket can be read or the time-out is over.
ReadWait WaitReadable(SocketHandle socket, const WaitTime& timeOut);
/// Reads one datagram, cut to `capacity` bytes if the system cuts. @param sender may be null.
/// @return the number of bytes read (0 for an empty datagram), or kSocketError.
int ReceiveDatagram(SocketHandle socket, char* bytes, int capacity, SocketAddress* sender);
/// Shuts down both directions and closes the socket.
void CloseSocket(SocketHandle socket);

}  // namespace platform
