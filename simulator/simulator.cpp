// SPDX-License-Identifier: MIT
#include "simulator/simulator.h"

#include <chrono>

#include "simulator/characters.h"
#include "simulator/civil_time.h"
#include "simulator/formatted.h"

namespace simulator {

namespace {

double SteadySeconds() {
  const auto since = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration<double>(since).count();
}

/// A command may hold any bytes; a terminal must not see them.
std::string Printable(std::string_view bytes) {
  std::string text;
  for (const char c : bytes.substr(0, kMaxCommandLength)) {
    const bool plain = IsPrintable(c) && c != '\\';
    text += plain ? std::string(1, c) : Formatted("\\x%02x", static_cast<unsigned char>(c));
  }
  if (bytes.size() > kMaxCommandLength) text += "...";
  return text;
}

}  // namespace

Simulator::Simulator(const SimulatorOptions& options, Reporter reporter, Stopwatch stopwatch)
    : options_(options),
      reporter_(std::move(reporter)),
      stopwatch_(stopwatch ? std::move(stopwatch) : Stopwatch(SteadySeconds)),
      model_(options.mount),
      interpreter_(model_),
      lastSeconds_(stopwatch_()),
      server_([this](std::string_view line) { return Answer(line); }, options.faults,
              options.recorder) {}

std::string Simulator::Answer(std::string_view line) {
  const std::lock_guard guard(lock_);
  const double now = stopwatch_();
  model_.Advance((now - lastSeconds_) * options_.timeScale);
  lastSeconds_ = now;
  const CommandOutcome outcome = interpreter_.Answer(line);
  if (reporter_) Report(line, outcome);
  return outcome.reply;
}

void Simulator::Report(std::string_view line, const CommandOutcome& outcome) const {
  const CivilTime time = CivilFromSeconds(model_.UtcSeconds());
  const int ms = static_cast<int>(time.second * 1000.0);
  std::string text =
      Formatted("%02d:%02d:%02d.%03d ", time.hour, time.minute, ms / 1000, ms % 1000);
  text += Printable(line) + " -> " + outcome.reply;
  if (!outcome.note.empty()) text += "  (" + outcome.note + ")";
  reporter_(text);
}

}  // namespace simulator
