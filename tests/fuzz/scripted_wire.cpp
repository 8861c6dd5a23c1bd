// SPDX-License-Identifier: MIT
#include "tests/fuzz/scripted_wire.h"

#include <algorithm>
#include <cstring>
#include <ctime>

#include "platform/clock.h"
#include "platform/user_settings.h"

namespace {

constexpr uint16_t kFamily = 2;
constexpr uint32_t kNumericAddress = 0x0100000A;

uint16_t Swapped(uint16_t port) {
  return static_cast<uint16_t>(port << 8 | port >> 8);
}

}  // namespace

ScriptedWire& TheWire() {
  static ScriptedWire wire;
  return wire;
}

namespace platform {

int StartSockets(uint16_t, SocketStartupData&) {
  return 0;
}

void StopSockets() {}

SocketHandle OpenDatagramSocket() {
  ScriptedWire& wire = TheWire();
  return wire.hasSockets ? static_cast<SocketHandle>(++wire.socketsOpened) : kInvalidSocket;
}

int BindSocket(SocketHandle, const SocketAddress&) {
  return TheWire().canBind ? 0 : -1;
}

uint16_t BoundPort(SocketHandle) {
  return kScriptedLocalPort;
}

uint32_t AddressFromText(const char* text) {
  return std::strcmp(text, kNumericHost) == 0 ? kNumericAddress : kNoAddress;
}

bool LookUpHost(const char*, uint32_t& networkAddress) {
  if (TheWire().knowsHosts) networkAddress = kNumericAddress;
  return TheWire().knowsHosts;
}

SocketAddress MakeAddress(uint32_t networkAddress, uint16_t port) {
  return {kFamily, Swapped(port), networkAddress, {}};
}

uint16_t PortOf(const SocketAddress& address) {
  return Swapped(address.portNetworkOrder);
}

int SendDatagram(SocketHandle, const char* bytes, int count, const SocketAddress&) {
  ScriptedWire& wire = TheWire();
  if (wire.sends++ == wire.failingSend) return kSocketError;
  const int taken = std::min(count, wire.bytesPerSend);
  wire.sent.append(bytes, static_cast<size_t>(taken));
  return taken;
}

ReadWait WaitReadable(SocketHandle, const WaitTime& timeOut) {
  ScriptedWire& wire = TheWire();
  wire.lastTimeOut = timeOut;
  wire.clockMs = static_cast<int32_t>(static_cast<uint32_t>(wire.clockMs) + wire.waitTakesMs);
  return wire.wait;
}

int ReceiveDatagram(SocketHandle, char* bytes, int capacity, SocketAddress*) {
  ScriptedWire& wire = TheWire();
  ++wire.receives;
  wire.lastReceiveCapacity = capacity;
  if (wire.receiveFails) return kSocketError;
  const int count = std::min(capacity, static_cast<int>(wire.datagram.size()));
  std::memcpy(bytes, wire.datagram.data(), static_cast<size_t>(count));
  return count;
}

void CloseSocket(SocketHandle socket) {
  TheWire().closed.push_back(socket);
}

int32_t ProcessClockMs() {
  return TheWire().clockMs;
}

bool LocalTime(int64_t, std::tm& local) {
  local = {};
  return true;
}

bool ReadUserSetting(const char*, const char*, char*, size_t) {
  return false;
}

}  // namespace platform
