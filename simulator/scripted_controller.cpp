// SPDX-License-Identifier: MIT
#include "simulator/scripted_controller.h"

#include <algorithm>
#include <cstdint>
#include <random>
#include <stdexcept>

#include "platform/threads.h"
#include "simulator/formatted.h"

namespace simulator {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr const char* kSharedAddress = "127.0.0.1";
constexpr int kApartTries = 3;
constexpr int kAddressCheckMs = 5;
constexpr int kStopCheckMs = 20;
constexpr const char* kUprightStatus = "60000.5,1,0,0,0,45.0,10,20,6.0,22.5,4";

/// From 127.16 on, clear of the low addresses that people and other servers use.
std::string AnyAddress(std::random_device& random) {
  return Formatted("127.%u.%u.%u", 16 + random() % 200, random() % 256, 1 + random() % 254);
}

std::string TextOf(const std::string& bytes) {
  return bytes.ends_with(kLineEnd) ? bytes.substr(0, bytes.size() - kLineEnd.size()) : bytes;
}

bool Names(const std::string& name, const std::string& command) {
  return name.ends_with('=') ? command.starts_with(name) : command == name;
}

}  // namespace

ScriptedController::ScriptedController(int patienceMs) {
  if (!Listen(patienceMs) || !stranger_.Open("127.0.0.1", 0)) {
    throw std::runtime_error("no free loopback address for a scripted controller");
  }
  wire_.SetRecorder([this](const WireDatagram& datagram) {
    const std::lock_guard guard(wireLogLock_);
    if (keepsWireLog_) wireLog_.push_back(datagram);
  });
  thread_ = std::thread([this] { Run(); });
}

bool ScriptedController::CanStandBesideOthers() {
  static const bool can = [] {
    // Two addresses with the same port: the second fails where the first one took them all, and now
    // and then because somebody happens to use it.
    bool isOpen = false;
    for (int i = 0; i < kApartTries && !isOpen; ++i) {
      DatagramSocket first;
      DatagramSocket second;
      isOpen = first.Open("127.15.0.1", 0) && second.Open("127.15.0.2", first.Port());
    }
    return isOpen;
  }();
  return can;
}

bool ScriptedController::Listen(int patienceMs) {
  const auto deadline = begin_ + std::chrono::milliseconds(patienceMs);
  std::random_device random;
  for (;;) {
    address_ = CanStandBesideOthers() ? AnyAddress(random) : kSharedAddress;
    if (socket_.Open(address_, kPort)) return true;
    if (Clock::now() >= deadline) return false;
    platform::SleepMs(kAddressCheckMs);
  }
}

ScriptedController::~ScriptedController() {
  stopping_ = true;
  thread_.join();
}

void ScriptedController::Answers(const std::string& command, const ScriptedReply& reply) {
  AnswersInTurn(command, {reply});
}

void ScriptedController::AnswersInTurn(const std::string& command,
                                       const std::vector<ScriptedReply>& replies) {
  const std::lock_guard guard(lock_);
  table_[command] = {{}, {replies.begin(), replies.end()}};
}

void ScriptedController::AnswersRaw(const std::string& command, const std::string& bytes) {
  Answers(command, Raw(bytes));
}

void ScriptedController::AnswersDatagrams(const std::string& command,
                                          const std::vector<std::string>& datagrams) {
  Answers(command, Datagrams(datagrams));
}

void ScriptedController::AnswersEmpty(const std::string& command) {
  Answers(command, EmptyDatagram());
}

void ScriptedController::AnswersLate(const std::string& command, const std::string& line,
                                     int delayMs) {
  Answers(command, Late(line, delayMs));
}

void ScriptedController::AnswersFromElsewhere(const std::string& command, const std::string& line) {
  Answers(command, FromElsewhere(line));
}

void ScriptedController::IsSilentTo(const std::string& command) {
  Answers(command, Silence());
}

void ScriptedController::AnswersOnce(const std::string& command, const ScriptedReply& reply) {
  const std::lock_guard guard(lock_);
  table_[command].once.push_back(reply);
}

void ScriptedController::LooksLikeAMount() {
  Answers("$SYVER?", "$SYVER=1.00");
  Answers("$MTMDL?", "$MTMDL=1,2.5,3.0");
  Answers("$SYLOC?", "$SYLOC=139.767,35.681,9");
  Answers("$SYUTM?", "$SYUTM=2024,1,2,3,4,5");
  Status(kUprightStatus);
  for (const char* key : {"$MTTGT=", "$ALIGN=", "$ALINI=", "$MTSTP=", "$MTMV2=", "$MTAGS=",
                          "$MTCOM=", "$MTGTS=", "$MTINI=", "$SYLOC=", "$SYLTM="}) {
    Answers(key, std::string(key) + "1");
  }
}

void ScriptedController::Status(const std::string& values) {
  Answers("$MTSTA?", "$MTSTA=" + values);
}

void ScriptedController::SetFaults(FaultChooser chooser) {
  const std::lock_guard guard(lock_);
  wire_.SetFaults(std::move(chooser));
}

void ScriptedController::StartWireLog() {
  const std::lock_guard guard(wireLogLock_);
  keepsWireLog_ = true;
  wireLog_.clear();
}

std::vector<WireDatagram> ScriptedController::WireLog() const {
  const std::lock_guard guard(wireLogLock_);
  return wireLog_;
}

std::vector<ReceivedDatagram> ScriptedController::Received() const {
  const std::lock_guard guard(lock_);
  return received_;
}

std::vector<std::string> ScriptedController::Commands() const {
  const std::lock_guard guard(lock_);
  std::vector<std::string> commands;
  commands.reserve(received_.size());
  for (const ReceivedDatagram& datagram : received_) commands.push_back(datagram.text);
  return commands;
}

int ScriptedController::CountOf(const std::string& command) const {
  const std::lock_guard guard(lock_);
  return CountLocked(command);
}

int ScriptedController::CountLocked(const std::string& command) const {
  return static_cast<int>(std::count_if(
      received_.begin(), received_.end(),
      [&](const ReceivedDatagram& datagram) { return Names(command, datagram.text); }));
}

void ScriptedController::Clear() {
  const std::lock_guard guard(lock_);
  received_.clear();
}

bool ScriptedController::WaitFor(const std::string& command, int timeoutMs) const {
  return WaitForCount(command, 1, timeoutMs);
}

bool ScriptedController::WaitForCount(const std::string& command, int count, int timeoutMs) const {
  std::unique_lock guard(lock_);
  return arrived_.wait_for(guard, std::chrono::milliseconds(timeoutMs),
                           [&] { return CountLocked(command) >= count; });
}

bool ScriptedController::SendToLastSender(const std::string& bytes) {
  const std::lock_guard guard(lock_);
  if (lastSender_) wire_.SendUnasked(bytes, *lastSender_);
  return lastSender_.has_value();
}

void ScriptedController::Run() {
  std::string bytes;
  platform::SocketAddress sender = {};
  while (!stopping_) {
    if (!socket_.Wait(wire_.SendWhatIsDue(kStopCheckMs))) continue;
    if (socket_.Receive(bytes, sender)) Take(bytes, sender);
  }
}

void ScriptedController::Take(const std::string& bytes, const platform::SocketAddress& sender) {
  const auto now = Clock::now();
  const std::lock_guard guard(lock_);
  const std::string text = TextOf(bytes);
  const double timeMs = std::chrono::duration<double, std::milli>(now - begin_).count();
  received_.push_back({text, bytes, timeMs, platform::PortOf(sender)});
  lastSender_ = sender;
  wire_.Exchange(bytes, sender, [&] { return NextReply(text); });
  arrived_.notify_all();
}

ScriptedReply ScriptedController::NextReply(const std::string& command) {
  for (const std::string& name : {command, command.substr(0, command.find('=') + 1)}) {
    const auto found = table_.find(name);
    if (found == table_.end()) continue;
    auto& [once, turns] = found->second;
    if (once.empty() && turns.empty()) continue;
    auto& source = once.empty() ? turns : once;
    ScriptedReply reply = source.front();
    if (&source == &once || turns.size() > 1) source.pop_front();
    return reply;
  }
  return Silence();
}

}  // namespace simulator
