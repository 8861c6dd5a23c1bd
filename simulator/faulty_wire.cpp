// SPDX-License-Identifier: MIT
#include "simulator/faulty_wire.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <utility>

#include "simulator/formatted.h"

namespace simulator {

namespace {

std::string PlaceText(const platform::SocketAddress& address) {
  unsigned char bytes[4];
  std::memcpy(bytes, &address.addressNetworkOrder, sizeof bytes);
  return Formatted("%u.%u.%u.%u:%u", bytes[0], bytes[1], bytes[2], bytes[3],
                   platform::PortOf(address));
}

}  // namespace

void FaultyWire::SetFaults(FaultChooser chooser) {
  chooser_ = std::move(chooser);
  exchanges_ = 0;
}

void FaultyWire::Exchange(std::string_view command, const platform::SocketAddress& host,
                          const Answerer& answer) {
  ++exchanges_;
  WireDatagram datagram;
  datagram.exchange = exchanges_;
  datagram.fault = chooser_ ? chooser_(exchanges_, command) : Fault();
  datagram.bytes = command;
  if (recorder_) datagram.peer = PlaceText(host);
  RecordNow(datagram);

  const Fault& fault = datagram.fault;
  const ScriptedReply reply = fault.silence || fault.losesCommand ? Silence() : answer();
  std::vector<Outgoing> outgoing;
  const auto add = [&](WireDirection direction, const std::string& bytes) {
    Outgoing& next = outgoing.emplace_back(Outgoing{host, datagram});
    next.datagram.direction = direction;
    next.datagram.bytes = bytes;
  };
  if (fault.foreign && !fault.silence) add(WireDirection::kForeign, kForeignLine);
  const size_t strangers = outgoing.size();
  if (fault.losesReply) {
    for (const std::string& bytes : reply.datagrams) add(WireDirection::kLost, bytes);
  }
  for (const std::string& bytes : AfterFault(fault, reply.datagrams)) {
    add(reply.fromElsewhere ? WireDirection::kForeign : WireDirection::kOut, bytes);
  }
  std::vector<Outgoing> behind = std::exchange(held_, {});
  if (fault.reorders) {
    held_.assign(outgoing.begin() + static_cast<ptrdiff_t>(strangers), outgoing.end());
    outgoing.resize(strangers);
  }
  const int delayMs = reply.delayMs + fault.delayMs;
  Queue(std::move(outgoing), delayMs);
  Queue(std::move(behind), delayMs);
}

void FaultyWire::Ignore(std::string_view bytes, const platform::SocketAddress& host) const {
  RecordAlone(WireDirection::kIn, bytes, host);
}

void FaultyWire::SendUnasked(std::string_view bytes, const platform::SocketAddress& host) {
  RecordAlone(WireDirection::kOut, bytes, host);
  socket_.Send(bytes, host);
}

double FaultyWire::NowMs() const {
  return std::chrono::duration<double, std::milli>(Clock::now() - begin_).count();
}

int FaultyWire::SendWhatIsDue(int longestMs) {
  while (!pending_.empty() && pending_.begin()->first <= Clock::now()) {
    const Outgoing& due = pending_.begin()->second;
    const WireDirection direction = due.datagram.direction;
    RecordNow(due.datagram);
    if (direction != WireDirection::kLost) {
      DatagramSocket& from = direction == WireDirection::kForeign ? stranger_ : socket_;
      from.Send(due.datagram.bytes, due.to);
    }
    pending_.erase(pending_.begin());
  }
  if (pending_.empty()) return longestMs;
  const auto left = pending_.begin()->first - Clock::now();
  const auto leftMs = std::chrono::ceil<std::chrono::milliseconds>(left).count();
  return static_cast<int>(std::clamp<int64_t>(leftMs, 0, longestMs));
}

void FaultyWire::Queue(std::vector<Outgoing> outgoing, int delayMs) {
  const auto due = Clock::now() + std::chrono::milliseconds(delayMs);
  for (Outgoing& datagram : outgoing) pending_.emplace(due, std::move(datagram));
}

void FaultyWire::RecordNow(WireDatagram datagram) const {
  if (!recorder_) return;
  datagram.timeMs = NowMs();
  recorder_(datagram);
}

void FaultyWire::RecordAlone(WireDirection direction, std::string_view bytes,
                             const platform::SocketAddress& host) const {
  if (!recorder_) return;
  WireDatagram datagram;
  datagram.direction = direction;
  datagram.peer = PlaceText(host);
  datagram.bytes = bytes;
  RecordNow(std::move(datagram));
}

}  // namespace simulator
