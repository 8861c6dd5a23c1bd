// SPDX-License-Identifier: MIT
// velquin-sim: a VELQUIN controller on the network without a mount, for demonstrations and for
// trying hosts out. Exit codes: 0 ended as asked, 1 cannot listen, 2 wrong arguments, 3 the record
// could not be written to its end.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <utility>
#include <vector>

#include "platform/threads.h"
#include "simulator/characters.h"
#include "simulator/civil_time.h"
#include "simulator/command_line.h"
#include "simulator/fault_dice.h"
#include "simulator/formatted.h"
#include "simulator/simulator.h"
#include "simulator/wire_record_file.h"

namespace {

constexpr int kExitCannotListen = 1;
constexpr int kExitWrongArguments = 2;
constexpr int kExitRecordCut = 3;
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

/// A word that begins with "-" is the next option, before which the name was forgotten.
std::string CheckFileName(const std::string& text) {
  return text.empty() || text.starts_with('-') ? "'" + text + "' is no name of a file" : "";
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

std::optional<double> RangeValue(const std::string& text, double low, double high) {
  return simulator::NumberValue(text, low, high);
}

std::optional<int> RangeValue(const std::string& text, int low, int high) {
  return simulator::WholeValue(text, low, high);
}

/// A number of a range, whole when its limits are; value holds the default one. The argument
/// parser's own reading lets a "nan" pass and takes 010 for eight.
template <typename Limit, typename Number>
void AddNumber(CLI::App& app, const std::string& name, const std::string& help,
               const std::string& type, Limit low, Limit high, Number& value) {
  constexpr const char* kWanted =
      std::is_integral_v<Limit> ? "whole number from %g to %g" : "number from %g to %g";
  const std::string wanted =
      simulator::Formatted(kWanted, static_cast<double>(low), static_cast<double>(high));
  const auto read = [&value, low, high](const std::string& text) {
    const auto number = RangeValue(text, low, high);
    if (number) value = static_cast<Number>(*number);
    return number.has_value();
  };
  AddText(app, name, help, type, wanted, read)
      ->default_str(simulator::Formatted("%g", static_cast<double>(value)));
}

void DeclareController(CLI::App& app, ProgramOptions& options) {
  app.add_option("--address", options.simulator.address,
                 "IPv4 address of this machine to listen on")
      ->check(CheckAddress)
      ->type_name("IPV4");
  AddNumber(app, "--port", "UDP port to listen on", "PORT", 1, 65535, options.simulator.port);
  AddNumber(app, "--time-scale", "seconds that pass for mount and controller in one second",
            "FACTOR", 0.001, 1000.0, options.simulator.timeScale);
  app.add_option("--clock", options.clock, "controller's clock at the start: now or a UTC time")
      ->check(CheckClock)
      ->type_name("now|YYYY-MM-DDTHH:MM:SS");
  AddNumber(app, "--run-for", "end after so long; 0: when told to", "SECONDS", 0.0, 1e7,
            options.runForSeconds);
  app.add_flag("--verbose", options.verbose, "print every command and its answer");
  app.set_version_flag("--version", "velquin-sim " VELQUIN_VERSION);
}

void DeclareMount(CLI::App& app, simulator::MountSettings& mount) {
  AddNumber(app, "--top-rate", "fastest slew", "DEG_PER_S", 0.01, 50.0, mount.limits.topRate);
  AddNumber(app, "--acceleration", "at which slews start and end", "DEG_PER_S2", 0.01, 100.0,
            mount.limits.acceleration);
  AddNumber(app, "--latitude", "of the site, north positive", "DEGREES", -90.0, 90.0,
            mount.site.latitudeDegrees);
  AddNumber(app, "--longitude", "of the site, east positive", "DEGREES", -180.0, 180.0,
            mount.site.longitudeDegrees);
  AddNumber(app, "--zone", "how far local time is ahead of universal time", "HOURS", -12, 14,
            mount.site.zoneHours);
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
                              const auto read = simulator::UnsignedValue(text);
                              faults.seed = read.value_or(faults.seed);
                              return read.has_value();
                            }));
  app.add_option("--record", options.recordFile, "write every datagram and its fault to a file")
      ->check(CheckFileName)
      ->type_name("FILE");
  CLI::Option* replay =
      app.add_option("--replay", options.replayFile, "repeat the faults of a recorded file")
          ->check(CheckFileName)
          ->type_name("FILE");
  app.callback([replay, chances] {
    for (const CLI::Option* chance : chances) {
      if (replay->count() > 0 && chance->count() > 0) {
        throw CLI::ExcludesError(chance->get_name(), replay->get_name());
      }
    }
  });
}

/// Prints one line that a terminal can show, whatever was typed.
void PrintError(std::string reason) {
  constexpr size_t kHalf = 150;
  if (reason.size() > 2 * kHalf) reason.replace(kHalf, reason.size() - 2 * kHalf, " ... ");
  std::replace_if(reason.begin(), reason.end(), simulator::IsControlCharacter, ' ');
  std::fprintf(stderr, "velquin-sim: %s\n", reason.c_str());
}

int ReportWrongArguments(const std::string& reason) {
  PrintError(reason + " (--help tells the options)");
  return kExitWrongArguments;
}

/// What the argument parser is too patient with: it takes "--split=" for a --split without a value,
/// and "--verbose=010" for a --verbose.
/// @return what is wrong with the first argument like that; empty when there is none.
std::string WronglyEqual(int argumentCount, char** arguments) {
  for (int i = 1; i < argumentCount; ++i) {
    const std::string_view argument = arguments[i];
    const size_t equals = argument.find('=');
    if (!argument.starts_with("--") || equals == argument.npos) continue;
    const std::string name(argument.substr(0, equals));
    if (name == "--verbose" || name == "--help" || name == "--version") {
      return name + " takes no value";
    }
    if (equals == argument.size() - 1) return name + ": nothing behind the '='";
  }
  return {};
}

bool HasFaults(const simulator::FaultOptions& faults) {
  return faults.loss > 0 || faults.duplicate > 0 || faults.reorder > 0 || faults.truncate > 0 ||
         faults.garble > 0 || faults.empty > 0 || faults.foreign > 0 || faults.split > 0 ||
         faults.longestDelayMs > 0 || faults.silenceAfter;
}

/// The file of --record. The answering thread writes it; asked when that has ended.
struct Record {
  simulator::WireRecordFile file;
  bool isCut = false;  ///< a line could not be written, and none after it was
};

/// @return whether two paths lead to one file, however they are written.
bool NameOneFile(const std::string& first, const std::string& second) {
  std::error_code unreachable;  // a file that is not there is no other one's
  return first == second || std::filesystem::equivalent(first, second, unreachable);
}

/// Sets the network up. @return what is wrong with the files; empty when nothing is.
std::string PrepareNetwork(ProgramOptions& options, Record& record) {
  if (HasFaults(options.faults)) options.simulator.faults = simulator::FaultDice(options.faults);
  if (!options.replayFile.empty()) {
    if (NameOneFile(options.recordFile, options.replayFile)) {
      return "--record and --replay name the same file";
    }
    simulator::RecordedFaults faults;
    std::string complaint;
    if (!simulator::WireRecordFile::Read(options.replayFile, faults, complaint)) {
      return "--replay: '" + options.replayFile + "': " + complaint;
    }
    options.simulator.faults = simulator::ReplayOf(std::move(faults));
  }
  if (options.recordFile.empty()) return "";
  if (!record.file.Create(options.recordFile)) {
    return "--record: '" + options.recordFile + "' cannot be written";
  }
  options.simulator.recorder = [&record, name = options.recordFile](const auto& datagram) {
    if (record.file.Write(datagram) || record.isCut) return;
    record.isCut = true;
    PrintError("--record: '" + name + "' cannot be written any more, the record ends here");
  };
  return "";
}

void PrintLine(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

int Run(ProgramOptions& options) {
  using Clock = std::chrono::steady_clock;
  Record record;  // outlives the simulator, which writes it
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
  return record.isCut ? kExitRecordCut : 0;
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
    const std::string wrong = WronglyEqual(argumentCount, arguments);
    if (!wrong.empty()) return ReportWrongArguments(wrong);
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& asked) {
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    return ReportWrongArguments(error.what());
  }
  return Run(options);
}
