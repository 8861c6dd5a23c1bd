// SPDX-License-Identifier: MIT
// velquin-sim: a VELQUIN controller on the network without a mount, for demonstrations and for
// trying hosts out. Exit codes: 0 ended as asked, 1 cannot listen, 2 wrong arguments.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <string>

#include "platform/threads.h"
#include "simulator/civil_time.h"
#include "simulator/command_line.h"
#include "simulator/formatted.h"
#include "simulator/simulator.h"

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
};

std::string CheckClock(const std::string& text) {
  if (text == "now" || simulator::SecondsFromIsoText(text)) return "";
  return "'" + text + "' is neither now nor a time YYYY-MM-DDTHH:MM:SS of the years 1900 to 2199";
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
      ->check(CLI::Validator(CLI::ValidIPV4).description(""))
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

int ReportWrongArguments(const CLI::ParseError& error) {
  std::string reason = error.what();
  std::replace(reason.begin(), reason.end(), '\n', ' ');
  std::fprintf(stderr, "velquin-sim: %s (--help tells the options)\n", reason.c_str());
  return kExitWrongArguments;
}

void PrintLine(const std::string& line) {
  std::puts(line.c_str());
  std::fflush(stdout);
}

int Run(ProgramOptions& options) {
  using Clock = std::chrono::steady_clock;
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
  try {
    app.parse(argumentCount, arguments);
  } catch (const CLI::Success& asked) {
    return app.exit(asked);
  } catch (const CLI::ParseError& error) {
    return ReportWrongArguments(error);
  }
  return Run(options);
}
