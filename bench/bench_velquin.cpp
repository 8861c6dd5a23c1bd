// SPDX-License-Identifier: MIT
// The driver's three hot paths, each against what it could cost at best: an exchange against a bare
// socket loop, decoding a status line against sscanf, reading the position.
#include <cstdio>
#include <cstring>
#include <vector>

#include "bench/answering_peer.h"
#include "bench/position_reader.h"
#include "bench/stopwatch.h"
#include "core/net/udp_link.h"
#include "core/protocol/mount_status.h"

namespace {

const char kCommand[] = "$MTSTA?";

// What an exchange costs at the very least: one send, one wait, one receive.
class BareExchange {
 public:
  explicit BareExchange(const AnsweringPeer& peer)
      : socket(platform::OpenDatagramSocket()),
        to(platform::MakeAddress(platform::AddressFromText(peer.Host()), peer.Port())) {}
  ~BareExchange() { platform::CloseSocket(socket); }
  BareExchange(const BareExchange&) = delete;
  BareExchange& operator=(const BareExchange&) = delete;

  void operator()() {
    platform::SendDatagram(socket, "$MTSTA?\r\n", 9, to);
    platform::WaitReadable(socket, {0, 500000});
    char reply[4096];
    platform::ReceiveDatagram(socket, reply, sizeof reply, nullptr);
  }

 private:
  platform::SocketHandle socket;
  platform::SocketAddress to;
};

void Report(const char* what, double ns, const char* against, double otherNs) {
  std::printf("%-28s %10.1f ns   %-28s %10.1f ns   ratio %.3f\n", what, ns, against, otherNs,
              ns / otherNs);
}

// Both kinds take turns, so that what disturbs the machine disturbs both.
void BenchExchange() {
  AnsweringPeer peer;
  CUdpLink link;
  link.Open(peer.Host(), peer.Port());
  BareExchange bare(peer);
  const CString command(kCommand);
  std::vector<double> linkNs;
  std::vector<double> bareNs;
  for (int round = 0; round < 20000; ++round) {
    linkNs.push_back(NanosecondsPerCall(1, [&] { link.Query(command); }));
    bareNs.push_back(NanosecondsPerCall(1, [&] { bare(); }));
  }
  Report("CUdpLink::Query", Median(linkNs), "sendto/select/recvfrom", Median(bareNs));
  TimeOutErrorList errors;
  link.CopyTimeOutErrors(errors);
  std::printf("  journal records: %d\n", static_cast<int>(errors.GetSize()));
}

double ScanStatus(const char* line) {
  double f[8] = {};
  int n[3] = {};
  std::sscanf(line, "$MTSTA=%lf,%d,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%lf,%d", &f[0], &n[0], &f[1], &f[2],
              &f[3], &f[4], &f[5], &f[6], &f[7], &f[7], &n[1]);
  return f[7] + n[1];
}

void BenchDecode() {
  const CString line(AnsweringPeer::kAnswer,
                     static_cast<int>(std::strlen(AnsweringPeer::kAnswer)) - 2);
  std::vector<double> decodeNs;
  std::vector<double> scanNs;
  volatile double sink = 0.0;
  for (int round = 0; round < 200; ++round) {
    decodeNs.push_back(NanosecondsPerCall(200, [&] {
      MountStatus status;
      DecodeStatus(line, status);
      sink = status.decDegrees;
    }));
    scanNs.push_back(NanosecondsPerCall(200, [&] { sink = ScanStatus(line); }));
  }
  Report("DecodeStatus", Median(decodeNs), "sscanf, 11 conversions", Median(scanNs));
}

void BenchGetPos() {
  PositionReader reader;
  std::vector<double> ns;
  double radec[2];
  constexpr int kRounds = 200;
  ns.reserve(kRounds);
  for (int round = 0; round < kRounds; ++round) {
    ns.push_back(NanosecondsPerCall(2000, [&] { reader.Read(radec); }));
  }
  Report(reader.Name(), Median(ns), "limit", 100.0);
}

}  // namespace

int main() {
  platform::SocketStartupData sockets;
  platform::StartSockets(2, sockets);
  BenchExchange();
  BenchDecode();
  BenchGetPos();
  platform::StopSockets();
  return 0;
}
