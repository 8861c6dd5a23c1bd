// SPDX-License-Identifier: MIT
#include "simulator/udp_server.h"

namespace simulator {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr int kStopCheckMs = 50;

}  // namespace

bool UdpServer::Start(const std::string& address, uint16_t port) {
  if (thread_.joinable() || !socket_.Open(address, port)) return false;
  stopping_ = false;
  thread_ = std::thread([this] { Run(); });
  return true;
}

void UdpServer::Stop() {
  stopping_ = true;
  if (thread_.joinable()) thread_.join();
  socket_.Close();
}

void UdpServer::Run() {
  std::string datagram;
  platform::SocketAddress sender = {};
  while (!stopping_) {
    if (!socket_.Wait(kStopCheckMs)) continue;
    if (socket_.Receive(datagram, sender)) AnswerLines(datagram, sender);
  }
}

void UdpServer::AnswerLines(std::string_view datagram, const platform::SocketAddress& sender) {
  for (size_t end = datagram.find(kLineEnd); end != datagram.npos; end = datagram.find(kLineEnd)) {
    if (end > 0) socket_.Send(answerer_(datagram.substr(0, end)).append(kLineEnd), sender);
    datagram.remove_prefix(end + kLineEnd.size());
  }
}

}  // namespace simulator
