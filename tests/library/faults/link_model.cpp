// SPDX-License-Identifier: MIT
#include "tests/library/faults/link_model.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <deque>
#include <optional>

namespace {

using simulator::WireDatagram;
using simulator::WireDirection;

constexpr double kPatienceMs = 500.0;
constexpr char kLineEnd[] = "\r\n";

bool IsAlnum(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

std::string KeyOf(const std::string& line) {
  if (line.empty() || line[0] != '$') return "";
  const auto end = std::find_if_not(line.begin() + 1, line.end(), IsAlnum);
  return {line.begin(), end};
}

/// The wire of one session.
class Session {
 public:
  /// @param cases outlives the session, as history does
  Session(std::vector<WireDatagram> wire, double unclearMs, const std::vector<Unclear>& cases,
          LinkHistory& history)
      : wire_(std::move(wire)), unclearMs_(unclearMs), cases_(cases), history_(history) {}

  void Run() {
    history_.closed = false;
    for (size_t i = 0; i < wire_.size(); ++i) {
      if (wire_[i].direction == WireDirection::kIn) Exchange(i);
    }
  }

 private:
  void Exchange(size_t begin) {
    const WireDatagram& sent = wire_[begin];
    ModelExchange exchange = {sent.timeMs, sent.timeMs + kPatienceMs, sent.bytes, ""};
    exchange.command.erase(exchange.command.size() - 2);
    bool took = !waiting_.empty();
    if (took) {
      exchange.endMs = exchange.sentMs;
      TakeOldest(exchange);
    }
    for (size_t i = begin + 1; i < wire_.size() && wire_[i].direction != WireDirection::kIn; ++i) {
      if (wire_[i].direction == WireDirection::kLost) continue;
      waiting_.push_back(wire_[i].bytes);
      if (took) continue;
      const double passedMs = wire_[i].timeMs - sent.timeMs;
      history_.narrowMs = std::min(history_.narrowMs, std::abs(passedMs - kPatienceMs));
      const Unclear what = CaseOf(passedMs);
      if (what == Unclear::kMissed) continue;
      took = true;
      exchange.endMs = wire_[i].timeMs;
      TakeOldest(exchange);
      if (what == Unclear::kTakenSlow && !history_.closed) Fail(exchange, "TimeOut(1000)");
    }
    if (!took) Fail(exchange, "TimeOut");
    history_.exchanges.push_back(exchange);
  }

  /// @return what became of a datagram that came so long after the command; never kByTheClock
  Unclear CaseOf(double passedMs) {
    Unclear what = Unclear::kByTheClock;
    if (std::abs(passedMs - kPatienceMs) < unclearMs_) {
      const auto number = static_cast<size_t>(history_.unclear++);
      if (number < cases_.size()) what = cases_[number];
    }
    if (what != Unclear::kByTheClock) return what;
    return passedMs > kPatienceMs ? Unclear::kMissed : Unclear::kTaken;
  }

  void TakeOldest(ModelExchange& exchange) {
    const std::string datagram = waiting_.front();
    waiting_.pop_front();
    if (datagram.empty()) {
      Fail(exchange, "Socket Close");
      history_.closed = true;
      return;
    }
    held_ += datagram;
    const size_t end = held_.find(kLineEnd);
    if (end == std::string::npos) {
      Fail(exchange, "Can't Receve");
      return;
    }
    const std::string line = held_.substr(0, end);
    exchange.reply = line.substr(0, line.find('\0'));
    held_.erase(0, end + 2);
    if (KeyOf(exchange.reply) != KeyOf(exchange.command)) Fail(exchange, "Return Value Mismatch");
  }

  void Fail(const ModelExchange& exchange, const char* reason) {
    history_.failures.push_back({exchange.command, reason});
    history_.failedMs.push_back(exchange.endMs);
  }

  const std::vector<WireDatagram> wire_;
  const double unclearMs_;
  const std::vector<Unclear>& cases_;
  LinkHistory& history_;
  std::deque<std::string> waiting_;  // arrived, not read
  std::string held_;                 // read, without a line end so far
};

std::vector<std::string> Split(const std::string& text, char separator) {
  std::vector<std::string> parts(1);
  for (const char c : text) {
    if (c == separator) {
      parts.emplace_back();
    } else {
      parts.back() += c;
    }
  }
  return parts;
}

std::string TrimmedUpper(const std::string& text) {
  const char* blanks = " \t\r\n\v\f";
  const size_t begin = text.find_first_not_of(blanks);
  if (begin == std::string::npos) return "";
  std::string upper = text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
  for (char& c : upper) c = c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
  return upper;
}

/// The rule of the status reply: the key is looked at, the number of fields is not.
std::optional<SkyPosition> PositionOf(const std::string& reply) {
  const std::vector<std::string> parts = Split(reply, '=');
  if (TrimmedUpper(parts[0]) != "$MTSTA") return std::nullopt;
  const std::vector<std::string> fields = Split(parts.size() > 1 ? parts[1] : "", ',');
  const auto number = [&](size_t i) {
    return i < fields.size() ? std::atof(fields[i].c_str()) : 0.0;
  };
  return SkyPosition{number(8) / 24.0 * 360.0, number(9)};
}

}  // namespace

LinkHistory WhatTheLinkMade(const std::vector<WireDatagram>& log, double unclearMs,
                            const std::vector<Unclear>& cases) {
  std::vector<std::string> peers;
  for (const WireDatagram& datagram : log) {
    const bool known = std::find(peers.begin(), peers.end(), datagram.peer) != peers.end();
    if (datagram.direction == WireDirection::kIn && !known) peers.push_back(datagram.peer);
  }
  LinkHistory history;
  for (const std::string& peer : peers) {
    std::vector<WireDatagram> wire;
    std::copy_if(log.begin(), log.end(), std::back_inserter(wire),
                 [&](const WireDatagram& datagram) { return datagram.peer == peer; });
    Session(std::move(wire), unclearMs, cases, history).Run();
  }
  return history;
}

LinkHistory HistoryOfJournal(const std::vector<WireDatagram>& log, double unclearMs,
                             const std::vector<JournalEntry>& journal) {
  constexpr int kMostUnclear = 6;
  const LinkHistory byTheClock = WhatTheLinkMade(log, unclearMs);
  // Counts through all combinations, with a case for a digit.
  std::vector<Unclear> cases(std::min(byTheClock.unclear, kMostUnclear), Unclear::kByTheClock);
  for (;;) {
    LinkHistory history = WhatTheLinkMade(log, unclearMs, cases);
    if (history.failures == journal) return history;
    size_t digit = 0;
    for (; digit < cases.size(); ++digit) {
      cases[digit] = Unclear{(static_cast<int>(cases[digit]) + 1) % kUnclearCases};
      if (cases[digit] != Unclear::kByTheClock) break;
    }
    if (digit == cases.size()) return byTheClock;
  }
}

std::vector<SkyPosition> PolledPositions(const LinkHistory& history) {
  std::vector<SkyPosition> positions;
  for (const ModelExchange& exchange : history.exchanges) {
    if (exchange.command != "$MTSTA?" || exchange.reply.empty()) continue;
    if (const auto position = PositionOf(exchange.reply)) positions.push_back(*position);
  }
  return positions;
}
