// SPDX-License-Identifier: MIT
#include "gateways/mount/controller_link.h"

#include <algorithm>

#include "framework/base/cstring.h"
#include "platform/clock.h"

namespace velquin {

namespace {

using std::chrono::duration_cast;
using std::chrono::microseconds;
using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr char kLineEnd[] = "\r\n";
// How often a waiting exchange checks whether it is interrupted.
constexpr milliseconds kSlice{5};

std::string KeyOf(const std::string& line) {
  if (line.empty() || line[0] != '$') return "";
  return line.substr(0, line.find_first_of("=?"));
}

// An answer repeats the key of its command, case-insensitively, and has a value.
bool HasKey(const std::string& line, const char* key) {
  const std::string found = KeyOf(line);
  return !found.empty() && found.size() < line.size() && line[found.size()] == '=' &&
         CString(found.c_str()).CompareNoCase(key) == 0;
}

const char* ReasonOf(Exchanged how, const std::string& line) {
  if (how == Exchanged::kSilent) return "TimeOut";
  if (how == Exchanged::kMismatch) return "Return Value Mismatch";
  return line.empty() ? "Socket Close" : "Can't Receve";
}

}  // namespace

// Closes its socket at the end of the scope.
class ControllerLink::Socket {
 public:
  Socket() = default;
  ~Socket() { Close(); }
  Socket(const Socket&) = delete;
  Socket& operator=(const Socket&) = delete;

  bool Open() {
    Close();
    handle_ = platform::OpenDatagramSocket();
    constexpr uint32_t kAnyAddress = 0;
    return handle_ != platform::kInvalidSocket &&
           platform::BindSocket(handle_, platform::MakeAddress(kAnyAddress, 0)) >= 0;
  }
  platform::SocketHandle Handle() const { return handle_; }
  uint16_t Port() const { return platform::BoundPort(handle_); }

 private:
  void Close() {
    if (handle_ != platform::kInvalidSocket) platform::CloseSocket(handle_);
    handle_ = platform::kInvalidSocket;
  }

  platform::SocketHandle handle_ = platform::kInvalidSocket;
};

ControllerLink::ControllerLink(ExchangeJournal& journal) : journal_(journal) {
  constexpr uint16_t kVersion2 = 2;
  platform::StartSockets(kVersion2, startupData_);
}

ControllerLink::~ControllerLink() {
  platform::StopSockets();
}

void ControllerLink::SetPeer(uint32_t address, uint16_t port) {
  peer_ = platform::MakeAddress(address, port);
}

bool ControllerLink::OpenOnNewPort(Socket& socket) {
  constexpr int kTries = 20;
  for (int i = 0; i < kTries; ++i) {
    if (!socket.Open()) return false;
    const uint16_t port = socket.Port();
    if (std::find(lastPorts_.begin(), lastPorts_.end(), port) != lastPorts_.end()) continue;
    lastPorts_[nextPort_] = port;
    nextPort_ = (nextPort_ + 1) % lastPorts_.size();
    return true;
  }
  return false;
}

Answer ControllerLink::Exchange(const std::string& command, const Patience& patience,
                                const char* otherKey) {
  const int32_t startMs = platform::ProcessClockMs();
  Answer answer;
  Socket socket;
  const bool open = OpenOnNewPort(socket);
  answer.sentAt = Clock::now();
  const std::string line = command + kLineEnd;
  const int length = static_cast<int>(line.size());
  if (!open || platform::SendDatagram(socket.Handle(), line.data(), length, peer_) != length) {
    answer.endedAt = Clock::now();
    return answer;
  }
  Receive(socket, command, patience, otherKey, answer);
  answer.endedAt = Clock::now();
  if (!answer.IsAnswered() && answer.how != Exchanged::kAbandoned) {
    journal_.Record(command, startMs, ReasonOf(answer.how, answer.line));
  }
  return answer;
}

void ControllerLink::Receive(const Socket& socket, const std::string& command,
                             const Patience& patience, const char* otherKey, Answer& answer) const {
  const MonotonicTime timeOut = answer.sentAt + kReplyTimeOut;
  for (;;) {
    const MonotonicTime now = Clock::now();
    if (now >= timeOut) return;
    const bool interrupted =
        patience.interrupted != nullptr && patience.interrupted->load(std::memory_order_acquire);
    if (now >= patience.until || interrupted) {
      answer.how = Exchanged::kAbandoned;
      return;
    }
    MonotonicTime::duration wait = std::min(timeOut, patience.until) - now;
    if (patience.interrupted != nullptr) wait = std::min<MonotonicTime::duration>(wait, kSlice);
    const auto waitUs = std::max<int64_t>(duration_cast<microseconds>(wait).count(), 1);
    const platform::ReadWait readable =
        platform::WaitReadable(socket.Handle(), {0, static_cast<int32_t>(waitUs)});
    if (readable.result == 0) continue;
    if (!readable.marked) return;  // a system error; waiting again would return at once
    char bytes[2048];
    platform::SocketAddress sender;
    const int count = platform::ReceiveDatagram(socket.Handle(), bytes, sizeof bytes, &sender);
    const bool isPeer = sender.addressNetworkOrder == peer_.addressNetworkOrder &&
                        sender.portNetworkOrder == peer_.portNetworkOrder;
    if (count >= 0 && !isPeer) continue;
    answer.how = Exchanged::kUnusable;
    if (count <= 0) return;
    const std::string datagram(bytes, static_cast<size_t>(count));
    const size_t end = datagram.find(kLineEnd);
    answer.line = datagram.substr(0, end);
    if (end == std::string::npos) return;
    const bool fits = HasKey(answer.line, KeyOf(command).c_str()) ||
                      (otherKey != nullptr && HasKey(answer.line, otherKey));
    answer.how = fits ? Exchanged::kAnswered : Exchanged::kMismatch;
    return;
  }
}

}  // namespace velquin
