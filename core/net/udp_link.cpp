// SPDX-License-Identifier: MIT
#include "core/net/udp_link.h"

#include <cstdlib>
#include <cstring>

#include "platform/clock.h"
#include "platform/text_class.h"

namespace {

constexpr int32_t kFirstCapacity = 4096;
constexpr int32_t kGrowth = 2048;
constexpr char kLineEnd[] = "\r\n";
constexpr int kLineEndLength = 2;

}  // namespace

CUdpLink::CUdpLink() {
  constexpr uint16_t kVersion2 = 2;
  platform::StartSockets(kVersion2, startupData);
}

CUdpLink::~CUdpLink() {
  Close();
  platform::StopSockets();
}

int CUdpLink::SetTimeOut(int timeOutMs) {
  if (connected) return 0;
  timeOut = {timeOutMs / 1000, timeOutMs % 1000 * 1000};
  return 1;
}

// A failure does not close the socket: Close acts only on a connected link. So each failed open
// leaks one socket until the process ends.
int CUdpLink::Open(const char* host, uint16_t port) {
  if (connected) return 0;
  socketHandle = platform::OpenDatagramSocket();
  if (socketHandle == platform::kInvalidSocket) return 0;
  remotePort = port;
  remoteAddress = platform::AddressFromText(host);
  if (remoteAddress == platform::kNoAddress && !platform::LookUpHost(host, remoteAddress)) {
    return 0;
  }
  constexpr uint32_t kAnyAddress = 0;
  if (platform::BindSocket(socketHandle, platform::MakeAddress(kAnyAddress, 0)) < 0) return 0;
  localPort = platform::BoundPort(socketHandle);
  remoteSocketAddress = platform::MakeAddress(remoteAddress, port);
  receiveBuffer = static_cast<char*>(std::malloc(kFirstCapacity));
  if (receiveBuffer == nullptr) return 0;
  receiveBuffer[0] = '\0';
  bytesHeld = 0;
  connected = 1;
  bufferCapacity = kFirstCapacity;
  return 1;
}

void CUdpLink::Close() noexcept {
  if (!connected) return;
  platform::CloseSocket(socketHandle);
  connected = 0;
  std::free(receiveBuffer);
  receiveBuffer = nullptr;
  bytesHeld = 0;
  bufferCapacity = 0;
}

CString CUdpLink::Query(const CString& command) {
  if (!connected) return "";
  const int32_t startMs = platform::ProcessClockMs();
  if (!SendLine(command + kLineEnd)) return "";
  const platform::ReadWait wait = platform::WaitReadable(socketHandle, timeOut);
  if (wait.result == 0) {
    Record(command, startMs, "TimeOut");
    return "";
  }
  CString reply;
  if (!wait.marked) {
    Record(command, startMs, "FD_ISSET");
  } else if (ReceiveChunk() == -1) {
    Record(command, startMs, "Socket Close");
    Close();
    return "";
  } else if (const char* lineEnd = FindLineEnd(); lineEnd == nullptr) {
    Record(command, startMs, "Can't Receve");
  } else {
    reply = TakeLine(lineEnd);
    if (CommandKey(reply).Compare(CommandKey(command)) != 0) {
      Record(command, startMs, "Return Value Mismatch");
    }
  }
  RecordWhenSlow(command, startMs);
  return reply;
}

int CUdpLink::CheckUnit() {
  if (!connected) return 0;
  return Query("$SYVER?").Left(7) == "$SYVER=" ? 1 : 0;
}

uint16_t CUdpLink::GetLocalPort() const {
  return connected ? localPort : 65535;
}

void CUdpLink::CopyTimeOutErrors(TimeOutErrorList& list) {
  const CSingleLock guard(errorsLock);
  for (ptrdiff_t index = 0; index < TimeOutErrors.GetSize(); ++index) {
    list.Add(TimeOutErrors[index]);
  }
}

CString CUdpLink::CommandKey(const char* line) {
  if (*line != '$') return "";
  const char* end = line + 1;
  while (platform::IsMultibyteAlnum(static_cast<signed char>(*end))) ++end;
  return CString(line, static_cast<int>(end - line));
}

int CUdpLink::ReceiveChunk() {
  if (bufferCapacity - bytesHeld < kGrowth) {
    auto* grown = static_cast<char*>(
        std::realloc(receiveBuffer, static_cast<size_t>(bufferCapacity) + kGrowth));
    if (grown == nullptr) return -1;
    receiveBuffer = grown;
    bufferCapacity += kGrowth;
  }
  const int count = platform::ReceiveDatagram(socketHandle, receiveBuffer + bytesHeld,
                                              bufferCapacity - bytesHeld - 1, nullptr);
  if (count <= 0) return -1;
  bytesHeld += count;
  receiveBuffer[bytesHeld] = '\0';
  return count;
}

bool CUdpLink::SendLine(const CString& line) {
  int sent = 0;
  while (sent < line.GetLength()) {
    const int count = platform::SendDatagram(socketHandle, line.GetString() + sent,
                                             line.GetLength() - sent, remoteSocketAddress);
    if (count == platform::kSocketError) return false;
    sent += count;
  }
  return true;
}

// By length, not as zero-terminated text: a NUL among the received bytes must not hide the line
// ends after it, or the buffer would grow and never return a line again.
const char* CUdpLink::FindLineEnd() const {
  const char* from = receiveBuffer;
  const char* const end = receiveBuffer + bytesHeld;
  while (end - from >= kLineEndLength) {
    const auto* found = static_cast<const char*>(
        std::memchr(from, kLineEnd[0], static_cast<size_t>(end - from - 1)));
    if (found == nullptr) return nullptr;
    if (found[1] == kLineEnd[1]) return found;
    from = found + 1;
  }
  return nullptr;
}

CString CUdpLink::TakeLine(const char* lineEnd) {
  // A NUL ends the text of the line; the bytes after it are dropped with the line.
  const auto length = static_cast<int>(lineEnd - receiveBuffer);
  CString line(receiveBuffer,
               static_cast<int>(strnlen(receiveBuffer, static_cast<size_t>(length))));
  const int32_t consumed = length + kLineEndLength;
  bytesHeld -= consumed;
  std::memmove(receiveBuffer, receiveBuffer + consumed, static_cast<size_t>(bytesHeld));
  receiveBuffer[bytesHeld] = '\0';
  return line;
}

void CUdpLink::Record(const CString& command, int32_t startMs, const CString& reason) {
  TimeOutErrorW error{command, startMs, reason};
  const CSingleLock guard(errorsLock);
  TimeOutErrors.Add(error);
}

void CUdpLink::RecordWhenSlow(const CString& command, int32_t startMs) {
  // Unsigned, since the clock wraps in a process that has run for 25 days.
  const auto elapsedMs =
      static_cast<uint32_t>(platform::ProcessClockMs()) - static_cast<uint32_t>(startMs);
  const double elapsedSeconds = static_cast<int32_t>(elapsedMs) / 1000.0;
  if (!(elapsedSeconds > 0.5)) return;
  // Readers of the journal expect this number: the seconds plus a thousand, not milliseconds.
  CString reason;
  reason.Format("TimeOut(%04d)", static_cast<int>(elapsedSeconds + 1000.0));
  Record(command, startMs, reason);
}
