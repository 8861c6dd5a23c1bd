// SPDX-License-Identifier: MIT
// CUdpLink: one UDP conversation with one controller, a command line out, a reply line in. Owned by
// CVQCtrlW. Exchanges are not locked: one caller at a time. A failed exchange returns an empty
// reply and is recorded in TimeOutErrors. Another thread may copy that list at any time, since the
// host writes the journal while the worker still polls.
#pragma once

#include <cstdint>

#include "core/net/time_out_error.h"
#include "framework/base/critical_section.h"
#include "framework/base/cstring.h"
#include "platform/sockets.h"

class CUdpLink {
 public:
  /// The default port of the controller.
  static constexpr uint16_t kDefaultPort = 60023;

  /// Starts the system's sockets. The link is closed at first.
  CUdpLink();
  ~CUdpLink();
  CUdpLink(const CUdpLink&) = delete;
  CUdpLink& operator=(const CUdpLink&) = delete;

  /// Sets how long Query waits for a reply. @param timeOutMs milliseconds; the default is 500
  /// @return 1, or 0 (and nothing changes) while the link is connected.
  int SetTimeOut(int timeOutMs);

  /// Opens the link on a local port that the system chooses.
  /// @param host dotted IPv4 address or host name @param port host order
  /// @return 1, or 0 if the host does not exist or no socket is available. While the link is
  ///         connected, 0, and the link does not change.
  int Open(const char* host, uint16_t port);

  /// Closes a connected link and drops unread bytes; otherwise does nothing. TimeOutErrors remain.
  void Close() noexcept;

  /// One exchange: sends the command with a line end and waits for a datagram.
  /// Unread bytes (a second line, a line without end) stay in front of the datagram of the next
  /// exchange, so they answer it first. The sender of a datagram is not checked. An empty datagram
  /// or a receive error closes the link.
  /// @param command without line end
  /// @return the first line received, without line end; empty on failure.
  CString Query(const CString& command);

  /// @return 1 if the controller answers the version query with "$SYVER=", else 0.
  int CheckUnit();

  /// @return the local port, or 65535 while not connected.
  uint16_t GetLocalPort() const;

  /// Copies every failed or slow exchange since construction, oldest first. Entries are never
  /// removed.
  /// @param list receives them at its end. Any thread.
  void CopyTimeOutErrors(TimeOutErrorList& list);

 private:
  friend class UdpLinkProbe;  // the tests' view of the buffer and the addresses

  static CString CommandKey(const char* line);
  int ReceiveChunk();
  bool SendLine(const CString& line);
  CString TakeLine(const char* lineEnd);
  const char* FindLineEnd() const;
  void Record(const CString& command, int32_t startMs, const CString& reason);
  void RecordWhenSlow(const CString& command, int32_t startMs);

  platform::SocketStartupData startupData = {};
  int32_t connected = 0;
  uint32_t remoteAddress = 0;  // network byte order
  uint16_t remotePort = kDefaultPort;
  uint16_t localPort = 0;
  platform::WaitTime timeOut = {0, 500000};
  platform::SocketHandle socketHandle = platform::kInvalidSocket;
  platform::SocketAddress remoteSocketAddress;
  char* receiveBuffer = nullptr;  // from malloc; a NUL follows the bytes; null while closed
  int32_t bytesHeld = 0;
  int32_t bufferCapacity = 0;
  CCriticalSection errorsLock;  // held only for a copy
  TimeOutErrorList TimeOutErrors GUARDED_BY(errorsLock);
};
