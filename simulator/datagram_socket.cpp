// SPDX-License-Identifier: MIT
#include "simulator/datagram_socket.h"

namespace simulator {

namespace {

constexpr uint16_t kSocketsVersion = 0x0202;
constexpr int kLargestDatagram = 65536;

}  // namespace

DatagramSocket::DatagramSocket() {
  platform::StartSockets(kSocketsVersion, startup_);
}

DatagramSocket::~DatagramSocket() {
  Close();
  platform::StopSockets();
}

bool DatagramSocket::Open(const std::string& address, uint16_t port) {
  Close();
  const uint32_t networkAddress = platform::AddressFromText(address.c_str());
  if (networkAddress == platform::kNoAddress) return false;
  socket_ = platform::OpenDatagramSocket();
  if (!IsOpen()) return false;
  if (platform::BindSocket(socket_, platform::MakeAddress(networkAddress, port)) >= 0) return true;
  Close();
  return false;
}

void DatagramSocket::Close() {
  if (IsOpen()) platform::CloseSocket(socket_);
  socket_ = platform::kInvalidSocket;
}

uint16_t DatagramSocket::Port() const {
  return IsOpen() ? platform::BoundPort(socket_) : 0;
}

bool DatagramSocket::Wait(int timeoutMs) const {
  const platform::WaitTime timeOut = {timeoutMs / 1000, timeoutMs % 1000 * 1000};
  return platform::WaitReadable(socket_, timeOut).marked;
}

bool DatagramSocket::Receive(std::string& bytes, platform::SocketAddress& sender) {
  bytes.resize(kLargestDatagram);
  const int count = platform::ReceiveDatagram(socket_, bytes.data(), kLargestDatagram, &sender);
  bytes.resize(count > 0 ? static_cast<size_t>(count) : 0);
  return count >= 0;
}

void DatagramSocket::Send(std::string_view bytes, const platform::SocketAddress& to) {
  platform::SendDatagram(socket_, bytes.data(), static_cast<int>(bytes.size()), to);
}

}  // namespace simulator
