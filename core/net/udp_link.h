// SPDX-License-Identifier: MIT
// CUdpLink: one UDP conversation with one controller, a command line out, a reply line in.
// Owned by CVQCtrlW. Exchanges are not locked: one caller at a time. Failures come back as an empty
// reply and are kept in TimeOutErrors; that list alone may be copied by another thread meanwhile,
// since the host writes the journal while the worker still polls.
#pragma once

#include <cstdint>

#include "core/net/time_out_error.h"
#include "framework/base/critical_section.h"
#include "framework/base/cstring.h"
#include "platform/sockets.h"

class CUdpLink {
 public:
  /// The controller's port unless Open is given another.
  static constexpr uint16_t kDefaultPort = 60023;

  /// Starts the system's sockets; the link is closed.
  CUdpLink();
  ~CUdpLink();
  CUdpLink(const CUdpLink&) = delete;
  CUdpLink& operator=(const CUdpLink&) = delete;

  /// Sets how long Query waits for a reply. @param timeOutMs milliseconds, 500 at first
  /// @return 1, or 0 (and nothing changes) while the link is connected.
  int SetTimeOut(int timeOutMs);

  /// Opens the link on a local port that the system chooses.
  /// @param host dotted IPv4 address or host name @param port host order
  /// @return 1, or 0 when there is no such host or no socket; 0 also while the link is connected,
  ///         which is then left as it is.
  int Open(const char* host, uint16_t port);

  /// Closes a connected link and drops unread bytes; otherwise does nothing. TimeOutErrors stay.
  void Close() noexcept;

  /// One exchange: sends the command with a line end and waits for a datagram.
  /// Bytes that stay unread (a second line, a line without end) stand before the datagram of the
  /// next exchange and so answer it first. The
  /// sender of a datagram is not looked at. An empty datagram or a receive error closes the link.
  /// @param command without line end
  /// @return the first line received, without line end; empty on failure.
  CString Query(const CString& command);

  /// @return 1 when the controller answers the version query with "$SYVER=", else 0.
  int CheckUnit();

  /// @return the local port, or 65535 while not connected.
  uint16_t GetLocalPort() const;

  /// Copies every failed or slow exchange since construction, oldest first; none is ever removed.
  /// @param list gets them behind what it holds. Any thread.
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
  char* receiveBuffer = nullptr;  // from malloc; a NUL follows the bytes held; null while closed
  int32_t bytesHeld = 0;
  int32_t bufferCapacity = 0;
  CCriticalSection errorsLock;  // held for no longer than a copy takes
  TimeOutErrorList TimeOutErrors GUARDED_BY(errorsLock);
};
