// SPDX-License-Identifier: MIT
#include "simulator/udp_server.h"

namespace simulator {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kStopCheckMs = 50;

}  // namespace

UdpServer::UdpServer(Answerer answerer, FaultChooser faults, FaultyWire::Recorder recorder)
    : answerer_(std::move(answerer)) {
  wire_.SetFaults(std::move(faults));
  wire_.SetRecorder(std::move(recorder));
}

bool UdpServer::Start(const std::string& address, uint16_t port) {
  if (thread_.joinable() || !socket_.Open(address, port)) return false;
  if (!stranger_.Open(address, 0)) {
    socket_.Close();
    return false;
  }
  stopping_ = false;
  thread_ = std::thread([this] { Run(); });
  return true;
}

void UdpServer::Stop() {
  stopping_ = true;
  if (thread_.joinable()) thread_.join();
  socket_.Close();
  stranger_.Close();
}

void UdpServer::Run() {
  std::string datagram;
  platform::SocketAddress sender = {};
  while (!stopping_) {
    if (!socket_.Wait(wire_.SendWhatIsDue(kStopCheckMs))) continue;
    if (socket_.Receive(datagram, sender)) AnswerLines(datagram, sender);
  }
}

void UdpServer::AnswerLines(std::string_view datagram, const platform::SocketAddress& sender) {
  for (size_t end = datagram.find(kLineEnd); end != datagram.npos; end = datagram.find(kLineEnd)) {
    const std::string_view line = datagram.substr(0, end);
    const std::string_view bytes = datagram.substr(0, end + kLineEnd.size());
    if (line.empty()) {
      wire_.Ignore(bytes, sender);
    } else {
      wire_.Exchange(bytes, sender, [&] { return ScriptedReply(answerer_(line)); });
    }
    datagram.remove_prefix(bytes.size());
  }
  if (!datagram.empty()) wire_.Ignore(datagram, sender);
}

}  // namespace simulator
