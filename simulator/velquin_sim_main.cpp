// SPDX-License-Identifier: MIT
// velquin-sim: a VELQUIN controller on the network without a mount, for demonstrations and for
// trying hosts out. Exit codes: 0 ended as asked, 1 cannot listen, 2 wrong arguments.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <charconv>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <limits>
#include <string>
#include <utility>
#include <vector>

#include "platform/threads.h"
#include "simulator/civil_time.h"
#include "simulator/command_line.h"
#include "simulator/fault_dice.h"
#include "simulator/formatted.h"
#include "simulator/simulator.h"
#include "simulator/wire_record_file.h"

namespace {

constexpr int kExitCannotListen = 1;
constexpr int kExitWrongArguments = 2;
constexpr int kEndCheckMs = 50;

std::atomic<bool> endRequested = false;
static_assert(std::atomic<bool>::is_always_lock_free, "a signal handler may set nothing else");

void RequestEnd(int) {
  endRequested = true;
}

struct ProgramOptions {
  simulator::SimulatorOptions simulator;
  std::string clock = "now";
  bool verbose = false;
  double runForSeconds = 0.0;  // 0: until asked to end
  simulator::FaultOptions faults;
  std::string recordFile;
  std::string replayFile;
};

std::string CheckClock(const std::string& text) {
  if (text == "now" || simulator::SecondsFromIsoText(text)) return "";
  return "'" + text + "' is neither now nor a time YYYY-MM-DDTHH:MM:SS of the years 1900 to 2199";
}

/// Four plain numbers; unlike the argument parser's own check it lets no blanks and no leading
/// zeros pass, which the system would take for another address.
std::string CheckAddress(const std::string& text) {
  int a = 0, b = 0, c = 0, d = 0;
  char rest = '\0';
  const int read = std::sscanf(text.c_str(), "%3d.%3d.%3d.%3d%c", &a, &b, &c, &d, &rest);
  if (read == 4 && simulator::Formatted("%d.%d.%d.%d", a, b, c, d) == text &&
      std::max({a, b, c, d}) <= 255 && std::min({a, b, c, d}) >= 0) {
    return "";
  }
  return "'" + text + "' is no IPv4 address such as 127.0.0.1";
}

/// Numbers of a range; unlike the argument parser's own check it lets no "nan" pass.
CLI::Validator Within(double low, double high) {
  const auto check = [low, high](const std::string& text) -> std::string {
    if (simulator::NumberValue(text, low, high)) return "";
    return simulator::Formatted("'%s' is no number from %g to %g", text.c_str(), low, high);
  };
  return CLI::Validator(check, "");
}

void DeclareController(CLI::App& app, ProgramOptions& options) {
  app.add_option("--address", options.simulator.address,
                 "IPv4 address of this machine to listen on")
      ->check(CheckAddress)
      ->type_name("IPV4");
  app.add_option("--port", options.simulator.port, "UDP port to listen on")
      ->check(Within(1, 65535))
      ->type_name("PORT");
  app.add_option("--time-scale", options.simulator.timeScale,
                 "seconds that pass for mount and controller in one second")
      ->check(Within(0.001, 1000.0))
      ->type_name("FACTOR");
  app.add_option("--clock", options.clock, "controller's clock at the start: now or a UTC time")
      ->check(CheckClock)
      ->type_name("now|YYYY-MM-DDTHH:MM:SS");
  app.add_option("--run-for", options.runForSeconds, "end after so long; 0: when told to")
      ->check(Within(0.0, 1e7))
      ->type_name("SECONDS");
  app.add_flag("--verbose", options.verbose, "print every command and its answer");
  app.set_version_flag("--version", "velquin-sim " VELQUIN_VERSION);
}

void DeclareMount(CLI::App& app, simulator::MountSettings& mount) {
  app.add_option("--top-rate", mount.limits.topRate, "fastest slew")
      ->check(Within(0.01, 50.0))
      ->type_name("DEG_PER_S");
  app.add_option("--acceleration", mount.limits.acceleration, "at which slews start and end")
      ->check(Within(0.01, 100.0))
      ->type_name("DEG_PER_S2");
  app.add_option("--latitude", mount.site.latitudeDegrees, "of the site, north positive")
      ->check(Within(-90.0, 90.0))
      ->type_name("DEGREES");
  app.add_option("--longitude", mount.site.longitudeDegrees, "of the site, east positive")
      ->check(Within(-180.0, 180.0))
      ->type_name("DEGREES");
  app.add_option("--zone", mount.site.zoneHours, "how far local time is ahead of universal time")
      ->check(Within(-12, 14))
      ->type_name("HOURS");
}

/// An option whose text is read by a function of its own, which says whether it could.
template <typename Reader>
CLI::Option* AddText(CLI::App& app, const std::string& name, const std::string& help,
                     const std::string& type, const std::string& wanted, Reader read) {
  const auto take = [name, wanted, read](const CLI::results_t& texts) {
    if (read(texts.front())) return true;
    throw CLI::ValidationError(name, "'" + texts.front() + "' is no " + wanted);
  };
  return app.add_option(name, take, help)->type_name(type);
}

CLI::Option* AddRate(CLI::App& app, const std::string& name, const std::string& help, int& rate) {
  return AddText(app, name, help, "RATE", "rate from 0% to 100%", [&rate](const std::string& text) {
    const auto read = simulator::RateFromText(text);
    rate = read.value_or(0);
    return read.has_value();
  });
}

void DeclareRates(CLI::App& app, simulator::FaultOptions& faults,
                  std::vector<CLI::Option*>& chances) {
  chances = {
      AddRate(app, "--loss", "commands that never arrive, and replies too", faults.loss),
      AddRate(app, "--duplicate", "replies that come twice", faults.duplicate),
      AddRate(app, "--reorder", "replies that come behind the next one", faults.reorder),
      AddRate(app, "--truncate", "replies that end too early", faults.truncate),
      AddRate(app, "--garble", "replies with a wrong byte", faults.garble),
      AddRate(app, "--empty", "replies without a byte", faults.empty),
      AddRate(app, "--foreign", "replies behind a datagram from another port", faults.foreign),
      AddRate(app, "--split", "replies in two datagrams; all of them without a rate", faults.split)
          ->expected(0, 1)
          ->default_str("100%"),
  };
}

void DeclareFaults(CLI::App& app, ProgramOptions& options) {
  simulator::FaultOptions& faults = options.faults;
  std::vector<CLI::Option*> chances;
  app.option_defaults()->always_capture_default(false)->group("What goes wrong");
  DeclareRates(app, faults, chances);
  chances.push_back(AddText(app, "--delay", "every reply comes so late", "MIN..MAXms",
                            "delay like 50ms or 20..300ms", [&faults](const std::string& text) {
                              const auto read = simulator::DelayFromText(text);
                              if (read) faults.shortestDelayMs = read->shortestMs;
                              if (read) faults.longestDelayMs = read->longestMs;
                              return read.has_value();
                            }));
  chances.push_back(AddText(app, "--silence-after", "so many commands are heard, then none", "N",
                            "number of commands", [&faults](const std::string& text) {
                              faults.silenceAfter =
                                  simulator::WholeValue(text, 0, std::numeric_limits<int>::max());
                              return faults.silenceAfter.has_value();
                            }));
  chances.push_back(AddText(app, "--seed", "another one, other faults; 1 when missing", "S", "seed",
                            [&faults](const std::string& text) {
                              const char* end = text.data() + text.size();
                              const auto read = std::from_chars(text.data(), end, faults.seed);
                              return read.ec == std::errc() && read.ptr == end;
                            }));
  app.add_option("--record", options.recordFile, "write every datagram and its fault to a file")
      ->type_name("FILE");
  CLI::Option* replay =
      app.add_option("--replay", options.replayFile, "repeat the faults of a recorded file")
          ->type_name("FILE");
  app.callback([replay, chances] {
    for (const CLI::Option* chance : chances) {
      if (replay->count() > 0 && chance->count() > 0) {
        throw CLI::ExcludesError(chance->get_name(), replay->get_name());
      }
    }
  });
}

int ReportWrongArguments(std::string reason) {
  // One line that a terminal can show, whatever was typed.
  constexpr size_t kHalf = 150;
  if (reason.size() > 2 * kHalf) reason.replace(kHalf, reason.size() - 2 * kHalf, " ... ");
  std::replace_if(
      reason.begin(), reason.end(), [](char c) { return (c >= '\0' && c < ' ') || c == '\x7f'; },
      ' ');
  std::fprintf(stderr, "velquin-sim: %s (--help tells the options)\n", reason.c_str());
  return kExitWrongArguments;
}

bool HasFaults(const simulator::FaultOptions& faults) {
  return faults.loss > 0 || faults.duplicate > 0 || faults.reorder > 0 || faults.truncate > 0 ||
         faults.garble > 0 || faults.empty > 0 || faults.foreign > 0 || faults.split > 0 ||
         faults.longestDelayMs > 0 || faults.silenceAfter;
}

/// Sets the network up. @return what is wrong with the files; empty when nothing is.
std::string PrepareNetwork(ProgramOptions& options, simulator::WireRecordFile& record) {
  if (HasFaults(options.faults)) options.simulator.faults = simulator::FaultDice(options.faults);
  if (!options.replayFile.empty()) {
    if (options.recordFile == options.replayFile) return "--record and --replay name the same file";
    simulator::RecordedFaults faults;
    std::string complaint;
    if (!simulator::WireRecordFile::Read(options.replayFile, faults, complaint)) {
      return "--replay: '" + options.replayFile + "': " + complaint;
    }
    options.simulator.faults = simulator::ReplayOf(std::move(faults));
  }
  if (options.recordFile.empty()) return "";
  if (!record.Create(options.recordFile)) {
    return "--record: '" + options.recordFile + "' cannot be written";
  }
  options.simulator.recorder = [&record](const simulator::WireDatagram& datagram) {
    record.Write(datagram);
  };
  return "";
}

void PrintLine(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

int Run(ProgramOptions& options) {
  using Clock = std::chrono::steady_clock;
  simulator::WireRecordFile record;  // outlives the simulator, which writes it
  const std::string complaint = PrepareNetwork(options, record);
  if (!complaint.empty()) return ReportWrongArguments(complaint);
  options.simulator.mount.utcSeconds = options.clock == "now"
                                           ? simulator::SystemUtcSeconds()
                                           : *simulator::SecondsFromIsoText(options.clock);
  std::signal(SIGINT, RequestEnd);
  std::signal(SIGTERM, RequestEnd);
#ifdef SIGBREAK
  std::signal(SIGBREAK, RequestEnd);
#endif
  simulator::Simulator simulated(options.simulator,
                                 options.verbose ? PrintLine : simulator::Simulator::Reporter());
  const std::string place =
      options.simulator.address + ":" + std::to_string(options.simulator.port);
  if (!simulated.Start()) {
    std::fprintf(
        stderr,
        "velquin-sim: cannot listen on %s: the port is in use or the address is not one of "
        "this machine\n",
        place.c_str());
    return kExitCannotListen;
  }
  PrintLine("velquin-sim: listening on " + place);

  const bool endless = options.runForSeconds <= 0.0;
  const auto begin = Clock::now();
  const std::chrono::duration<double> runFor(options.runForSeconds);
  while (!endRequested && (endless || Clock::now() - begin < runFor)) {
    platform::SleepMs(kEndCheckMs);
  }
  simulated.Stop();
  return 0;
}

}  // namespace

int main(int argumentCount, char** arguments) {
  CLI::App app("A simulated VELQUIN telescope-mount controller on UDP.", "velquin-sim");
  ProgramOptions options;
  app.option_defaults()->always_capture_default();
  DeclareController(app, options);
  DeclareMount(app, options.simulator.mount);
  DeclareFaults(app, options);
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& asked) {
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    return ReportWrongArguments(error.what());
  }
  return Run(options);
}
