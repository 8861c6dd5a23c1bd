// SPDX-License-Identifier: MIT
#include "bench/answering_peer.h"

AnsweringPeer::AnsweringPeer() : socket(platform::OpenDatagramSocket()) {
  platform::BindSocket(socket, platform::MakeAddress(platform::AddressFromText(Host()), 0));
  port = platform::BoundPort(socket);
  thread = std::thread([this] { AnswerUntilStopped(); });
}

AnsweringPeer::~AnsweringPeer() {
  stopping = true;
  thread.join();
  platform::CloseSocket(socket);
}

void AnsweringPeer::AnswerUntilStopped() {
  while (!stopping) {
    if (!platform::WaitReadable(socket, {0, 50000}).marked) continue;
    char request[256];
    platform::SocketAddress sender;
    if (platform::ReceiveDatagram(socket, request, sizeof request, &sender) <= 0) continue;
    platform::SendDatagram(socket, kAnswer, sizeof kAnswer - 1, sender);
  }
}
