// SPDX-License-Identifier: MIT
// One function for each family of commands: words, help with examples, and the making of the
// action.
#include "console/command_definitions.h"

#include <algorithm>
#include <utility>

#include "console/argument_values.h"
#include "console/failure.h"
#include "console/local_time_text.h"

namespace velquinctl {
namespace {

constexpr double kArcsecPerDegree = 3600.0;
constexpr int kLongestPulseMs = 60000;
constexpr double kHighestRate = 200.0;
constexpr double kShortestSlewSeconds = 0.2;

[[noreturn]] void Refuse(const std::string& text) {
  throw Failure(ExitCode::kWrongUsage, text);
}

/// Begins a command that talks to the mount at an address.
CLI::App* Command(CommandDefinitions& d, const std::string& word, const std::string& help,
                  const std::string& examples, ActionMaker maker) {
  CLI::App* command = d.app.add_subcommand(word, help);
  command->group("Commands");
  command->footer("Examples:\n" + examples +
                  "\nOptions for every command, and exit codes: velquinctl --help");
  d.makers[word] = std::move(maker);
  return command;
}

void TakesAddress(CommandDefinitions& d, CLI::App* command) {
  command->add_option("ADDRESS", d.texts.address, "host name or IPv4 address of the controller")
      ->type_name("")
      ->required();
}

void TakesPosition(CommandDefinitions& d, CLI::App* command) {
  command
      ->add_option("RA", d.texts.ra,
                   "right ascension: 5h34m31.9s, 05:34:31.9 (hours), 5.575h, or degrees: 83.633")
      ->type_name("")
      ->required();
  command
      ->add_option("DEC", d.texts.dec,
                   "declination: +22d00m52s, -5:12:00, or degrees: 22.0145; may begin with a minus")
      ->type_name("")
      ->required();
}

void DefineQueries(CommandDefinitions& d) {
  CLI::App* check = Command(d, "check", "Ask a controller for its version; starts nothing",
                            "  velquinctl check 192.168.1.10\n",
                            [](const ArgumentTexts&) { return CheckAction{}; });
  TakesAddress(d, check);

  CLI::App* status = Command(d, "status", "Show where the mount points and what it is doing",
                             "  velquinctl status 192.168.1.10\n"
                             "  velquinctl status 192.168.1.10 --json\n"
                             "  velquinctl status 192.168.1.10 --watch --for 60\n",
                             [](const ArgumentTexts& t) {
                               if (!t.watch && !t.duration.empty())
                                 Refuse("--for requires --watch");
                               return StatusAction{t.watch, SecondsArgument("--for", t.duration)};
                             });
  TakesAddress(d, status);
  status->add_flag("--watch", d.texts.watch, "keep the line up to date until Ctrl-C");
  status->add_option("--for", d.texts.duration, "with --watch: end after this many seconds")
      ->type_name("SECONDS");

  CLI::App* monitor =
      Command(d, "monitor", "A table of positions and rates, a row each interval, until Ctrl-C",
              "  velquinctl monitor 192.168.1.10\n"
              "  velquinctl monitor 192.168.1.10 --for 10 --interval 0.5 --json\n",
              [](const ArgumentTexts& t) {
                MonitorAction action;
                if (!t.interval.empty())
                  action.intervalSeconds = NumberArgument("--interval", t.interval, 0.1, 3600);
                action.forSeconds = SecondsArgument("--for", t.duration);
                return action;
              });
  TakesAddress(d, monitor);
  monitor->add_option("--for", d.texts.duration, "end after this many seconds")
      ->type_name("SECONDS");
  monitor->add_option("--interval", d.texts.interval, "seconds from row to row (default 1)")
      ->type_name("SECONDS");
}

void DefineTargets(CommandDefinitions& d) {
  CLI::App* go =
      Command(d, "goto", "Slew to a position, show progress, end when it is reached",
              "  velquinctl goto 192.168.1.10 5h34m31.9s +22d00m52s\n"
              "  velquinctl goto 192.168.1.10 05:35:17 -5:23:28\n"
              "  velquinctl goto 192.168.1.10 83.633 -- -5.39\n",
              [](const ArgumentTexts& t) {
                GotoAction action{PositionArgument(t.ra, t.dec), 60 / kArcsecPerDegree};
                if (!t.tolerance.empty()) {
                  action.toleranceDegrees =
                      NumberArgument("--tolerance", t.tolerance, 0.1, 36000) / kArcsecPerDegree;
                }
                return action;
              });
  TakesAddress(d, go);
  TakesPosition(d, go);
  go->add_option("--tolerance", d.texts.tolerance,
                 "arc seconds from the target that count as reached (default 60)")
      ->type_name("ARCSEC");

  CLI::App* sync = Command(
      d, "sync", "Tell the mount that it points at a position",
      "  velquinctl sync 192.168.1.10 5h34m31.9s +22d00m52s\n",
      [](const ArgumentTexts& t) { return SyncAction{PositionArgument(t.ra, t.dec), t.yes}; });
  TakesAddress(d, sync);
  TakesPosition(d, sync);
  sync->add_flag("--yes", d.texts.yes, "do not ask when the position is more than 5 degrees away");
}

void DefinePlaces(CommandDefinitions& d) {
  TakesAddress(d, Command(d, "stop", "Stop the mount; keep trying until the controller agrees",
                          "  velquinctl stop 192.168.1.10\n"
                          "Connects and asks again until the controller acknowledges the stop or "
                          "--timeout is over.\n",
                          [](const ArgumentTexts&) { return StopAction{}; }));
  TakesAddress(d, Command(d, "home", "Slew to the home position and wait until it rests there",
                          "  velquinctl home 192.168.1.10\n",
                          [](const ArgumentTexts&) { return HomeAction{}; }));
  TakesAddress(d, Command(d, "park", "Slew to the park position and wait until it is parked",
                          "  velquinctl park 192.168.1.10 --timeout 120\n",
                          [](const ArgumentTexts&) { return ParkAction{}; }));
  TakesAddress(d, Command(d, "unpark", "Resume tracking where the mount points",
                          "  velquinctl unpark 192.168.1.10\n",
                          [](const ArgumentTexts&) { return UnparkAction{}; }));
}

Action MakeSlew(const ArgumentTexts& t) {
  SlewAction action;
  action.direction = DirectionArgument(t.direction);
  action.directionName = t.direction;
  action.speed = t.speed.empty() ? 4 : WholeArgument("--speed", t.speed, 0, 9);
  action.forSeconds = SecondsArgument("--for", t.duration).value_or(1.0);
  // The driver sends a move after its next status query; a shorter one would be over by then.
  if (action.forSeconds < kShortestSlewSeconds) Refuse("--for must be at least 0.2 seconds");
  return action;
}

Action MakePulse(const ArgumentTexts& t) {
  const std::pair<const char*, const std::string*> lengths[] = {
      {"--north", &t.north}, {"--south", &t.south}, {"--east", &t.east}, {"--west", &t.west}};
  PulseAction action;
  for (size_t i = 0; i < action.lengthsMs.size(); ++i) {
    const auto& [what, text] = lengths[i];
    if (!text->empty()) action.lengthsMs[i] = WholeArgument(what, *text, 0, kLongestPulseMs);
  }
  if (std::all_of(action.lengthsMs.begin(), action.lengthsMs.end(), [](int ms) { return ms == 0; }))
    Refuse("a pulse needs a length greater than 0: --north, --south, --east or --west");
  action.rateRa =
      t.rateRa.empty() ? 1.0 : NumberArgument("--rate-ra", t.rateRa, -kHighestRate, kHighestRate);
  action.rateDec = t.rateDec.empty()
                       ? 1.0
                       : NumberArgument("--rate-dec", t.rateDec, -kHighestRate, kHighestRate);
  return action;
}

void DefineHandMoves(CommandDefinitions& d) {
  CLI::App* slew = Command(d, "slew", "Move by hand in one direction for a while",
                           "  velquinctl slew 192.168.1.10 north\n"
                           "  velquinctl slew 192.168.1.10 west --speed 9 --for 2.5\n"
                           "East increases the right ascension. pulse has the opposite sign: "
                           "there, west does.\n",
                           MakeSlew);
  TakesAddress(d, slew);
  slew->add_option("DIRECTION", d.texts.direction, "north, south, east or west")
      ->type_name("")
      ->required();
  slew->add_option("--speed", d.texts.speed,
                   "step 0 to 9: 0.5 plus 25 per step, maximum 200, in the controller's rate unit "
                   "(default 4)")
      ->type_name("STEP");
  slew->add_option("--for", d.texts.duration, "seconds to move (default 1)")->type_name("SECONDS");

  CLI::App* pulse = Command(d, "pulse", "Send guide pulses, one after the other",
                            "  velquinctl pulse 192.168.1.10 --north 500 --east 250\n"
                            "  velquinctl pulse 192.168.1.10 --west 200 --rate-ra 0.5\n"
                            "West increases the right ascension. slew has the opposite sign: "
                            "there, east does.\n",
                            MakePulse);
  TakesAddress(d, pulse);
  pulse->add_option("--north", d.texts.north, "milliseconds, up to 60000")->type_name("MS");
  pulse->add_option("--south", d.texts.south, "milliseconds, up to 60000")->type_name("MS");
  pulse->add_option("--east", d.texts.east, "milliseconds, up to 60000")->type_name("MS");
  pulse->add_option("--west", d.texts.west, "milliseconds, up to 60000")->type_name("MS");
  pulse->add_option("--rate-ra", d.texts.rateRa, "rate of east and west (default 1)")
      ->type_name("RATE");
  pulse->add_option("--rate-dec", d.texts.rateDec, "rate of north and south (default 1)")
      ->type_name("RATE");

  CLI::App* guide =
      Command(d, "guide-speed", "Set the guide speeds of the two axes",
              "  velquinctl guide-speed 192.168.1.10 0.5 0.5\n", [](const ArgumentTexts& t) {
                return GuideSpeedAction{NumberArgument("RA", t.rateRa, 0, 200),
                                        NumberArgument("DEC", t.rateDec, 0, 200)};
              });
  TakesAddress(d, guide);
  guide->add_option("RA", d.texts.rateRa, "rate of the right ascension axis, 0 to 200")
      ->type_name("")
      ->required();
  guide->add_option("DEC", d.texts.rateDec, "rate of the declination axis, 0 to 200")
      ->type_name("")
      ->required();
}

Action MakeSite(const ArgumentTexts& t) {
  SiteAction action;
  action.location.latitude = NumberArgument("--latitude", t.latitude, -90, 90);
  action.location.longitude = NumberArgument("--longitude", t.longitude, -180, 360);
  if (!t.zone.empty()) action.zoneHours = NumberArgument("--zone", t.zone, -14, 14);
  if (!t.time.empty()) {
    action.localTime = ParseLocalTime(t.time);
    if (!action.localTime)
      Refuse("--time: \"" + t.time + "\" is not a valid time (write 2026-11-21T22:30:00)");
  }
  return action;
}

void DefineSettings(CommandDefinitions& d) {
  CLI::App* site =
      Command(d, "site", "Hand over site and clock; a ready mount then resumes tracking",
              "  velquinctl site 192.168.1.10 --latitude 35.68 --longitude 139.77\n"
              "  velquinctl site 192.168.1.10 --latitude 35.68 --longitude 139.77 --zone 9 "
              "--time 2026-11-21T22:30:00\n",
              MakeSite);
  TakesAddress(d, site);
  site->add_option("--latitude", d.texts.latitude, "degrees, north positive")
      ->type_name("DEGREES")
      ->required();
  site->add_option("--longitude", d.texts.longitude, "degrees, sent with its sign unchanged")
      ->type_name("DEGREES")
      ->required();
  site->add_option("--zone", d.texts.zone,
                   "hours east of universal time (default: the machine's; the controller takes the "
                   "whole hours)");
  site->add_option("--time", d.texts.time,
                   "local time (default: the machine's clock); the controller gets whole minutes")
      ->type_name("TIME");

  TakesAddress(d, Command(d, "align-reset", "Drop the controller's alignment",
                          "  velquinctl align-reset 192.168.1.10\n",
                          [](const ArgumentTexts&) { return AlignResetAction{}; }));

  CLI::App* ini = Command(d, "ini", "Connect with the meridian overrides of an INI file",
                          "  velquinctl ini 192.168.1.10 mount.ini Mount\n",
                          [](const ArgumentTexts& t) { return IniAction{t.file, t.section}; });
  TakesAddress(d, ini);
  ini->add_option("FILE", d.texts.file, "the INI file")->type_name("")->required();
  ini->add_option("SECTION", d.texts.section,
                  "its section with _OverrideMeridianStopPoint and _OverrideMeridianGoto")
      ->type_name("")
      ->required();
}

void DefineWindow(CommandDefinitions& d) {
  CLI::App* dialog =
      Command(d, "dialog", "Open the driver's hand controller and wait until it is closed",
              "  velquinctl dialog 192.168.1.10\n"
              "  velquinctl dialog 192.168.1.10 5h34m31.9s +22d00m52s\n"
              "The position is the target of its goto and sync buttons. The close box, Esc and "
              "Ctrl-C close the window.\n",
              [](const ArgumentTexts& t) {
                DialogAction action;
                if (t.ra.empty() != t.dec.empty()) Refuse("a target needs both RA and DEC");
                if (!t.ra.empty()) action.target = PositionArgument(t.ra, t.dec);
                return action;
              });
  TakesAddress(d, dialog);
  dialog->add_option("RA", d.texts.ra, "the target's right ascension, as for goto")->type_name("");
  dialog->add_option("DEC", d.texts.dec, "the target's declination, as for goto")->type_name("");
}

void DefineRun(CommandDefinitions& d) {
  CLI::App* run = Command(d, "run", "Run commands from a file, one per line",
                          "  velquinctl run evening.txt\n"
                          "A file may contain blank lines, # comments and \"quoted words\"; "
                          "the whole file is checked before anything moves:\n"
                          "  # evening.txt\n"
                          "  unpark 192.168.1.10\n"
                          "  goto 192.168.1.10 5h34m31.9s +22d00m52s\n",
                          [](const ArgumentTexts& t) { return RunAction{t.file}; });
  run->add_option("FILE", d.texts.file, "the file, in UTF-8 or UTF-16")->type_name("")->required();
}

void DefineHelp(CommandDefinitions& d) {
  // The parser's caller answers it, so there is nothing to make.
  CLI::App* help = Command(d, kHelpCommand, "Show this help, or the help of one command",
                           "  velquinctl help\n"
                           "  velquinctl help goto\n",
                           {});
  help->add_option("COMMAND", d.texts.topic, "the command")->type_name("");
}

}  // namespace

void DefineCommands(CommandDefinitions& definitions) {
  DefineQueries(definitions);
  DefineTargets(definitions);
  DefinePlaces(definitions);
  DefineHandMoves(definitions);
  DefineSettings(definitions);
  DefineWindow(definitions);
  DefineRun(definitions);
  DefineHelp(definitions);
}

}  // namespace velquinctl
