// SPDX-License-Identifier: MIT
#include "simulator/command_interpreter.h"

#include <cmath>
#include <cstdio>
#include <iterator>

#include "simulator/civil_time.h"
#include "tests/fuzz/language_model.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/targets.h"
#include "tests/fuzz/text_model.h"

namespace simulator {
namespace {

constexpr int kMaxSteps = 16;
// A slew goes in steps of a hundredth of a second, so most of what passes is short.
constexpr double kLongestStepSeconds = 0.5;
constexpr double kSlewSeconds = 50.0;

constexpr const char* kQueries[] = {"$MTSTA?", "$SYLOC?", "$SYUTM?", "$MTAGS?",
                                    "$MTCOM?", "$MTGTS?", "$MTMDL?", "$SYVER?"};
constexpr const char* kSettings[] = {
    "$MTTGT=", "$ALIGN=", "$ALINI=", "$MTSTP=", "$MTMV2=", "$MTAGS=",
    "$MTCOM=", "$MTGTS=", "$MTINI=", "$SYLOC=", "$SYLTM=", "$SYVER="};
constexpr const char* kUsualCommands[] = {"$ALINI=0", "$MTSTP=1", "$MTINI=1",
                                          "$MTTGT=1,270.0,0.0,Home", "$MTTGT=2,270.0,30.0,Park"};

std::string AnyNumber(FuzzInput& input) {
  char text[32];
  switch (input.Choice(6)) {
    case 0:
      return input.Text(input.Choice(8));
    case 1:
      std::snprintf(text, sizeof text, "%u", input.Choice(64));
      return text;
    case 2:
      std::snprintf(text, sizeof text, "%d", static_cast<int8_t>(input.Byte()));
      return text;
    case 3:
      std::snprintf(text, sizeof text, "%.6f", static_cast<int16_t>(input.Word()) / 90.0);
      return text;
    case 4:
      std::snprintf(text, sizeof text, "%8.3f", input.Word() / 2730.625);
      return text;
    default:
      std::snprintf(text, sizeof text, "%u", 1890u + input.Word() % 320u);
      return text;
  }
}

std::string AnySetting(FuzzInput& input) {
  std::string line = kSettings[input.Choice(std::size(kSettings))];
  const unsigned count = input.Choice(8);
  for (unsigned i = 0; i < count; ++i) line += (i == 0 ? "" : ",") + AnyNumber(input);
  return line;
}

// A setting with which the mount moves.
std::string AnyMotion(FuzzInput& input) {
  char text[128];
  const char* const kKeys[] = {"$MTTGT=", "$ALIGN="};
  const double ra = input.Word() / 65536.0 * 24.0;
  const double dec = static_cast<int16_t>(input.Word()) / 32768.0 * 90.0;
  std::snprintf(text, sizeof text, "%s3,%.6f,%.6f,", kKeys[input.Choice(2)], ra, dec);
  return text;
}

// Dates and places in their ranges and a little beyond.
std::string AnyClock(FuzzInput& input) {
  char text[128];
  const unsigned year = 1898 + input.Word() % 304u;
  const unsigned month = input.Choice(14);
  const unsigned day = input.Choice(33);
  const unsigned hour = input.Choice(25);
  const unsigned minute = input.Choice(62);
  std::snprintf(text, sizeof text, "$SYLTM=%04u,%02u,%02u,%02u,%02u,%04.1f", year, month, day, hour,
                minute, input.Word() % 604u / 10.0);
  return text;
}

std::string AnySite(FuzzInput& input) {
  char text[128];
  const double longitude = static_cast<int16_t>(input.Word()) / 32768.0 * 181.0;
  const double latitude = static_cast<int16_t>(input.Word()) / 32768.0 * 91.0;
  const int zone = static_cast<int>(input.Choice(29)) - 13;
  std::snprintf(text, sizeof text, "$SYLOC=%8.3f,%7.3f,%d", longitude, latitude, zone);
  return text;
}

class Run {
 public:
  explicit Run(FuzzInput& bytes) : input(bytes) {}

  void Step();
  void CheckMount() const;
  void CheckLines() {
    CheckStatusLine();
    CheckClockLine();
  }

 private:
  static MountSettings Settings() {
    MountSettings settings;
    settings.utcSeconds = 60324.5 * 86400.0;
    return settings;
  }
  std::string AnyLine();
  void CheckAnswer(const std::string& line);
  void CheckTaken(const std::string& key, const std::vector<std::string>& values);
  /// All that a refused line must leave alone.
  std::string Everything();
  std::string Ask(const std::string& query) { return interpreter.Answer(query).reply; }
  void CheckStatusLine();
  void CheckClockLine();

  FuzzInput& input;
  MountModel mount{Settings()};
  CommandInterpreter interpreter{mount};
};

void Run::Step() {
  if (input.Choice(4) == 0) {
    const unsigned part = input.Byte();
    mount.Advance(part >= 240 ? kSlewSeconds : part / 240.0 * kLongestStepSeconds);
    return;
  }
  CheckAnswer(AnyLine());
}

std::string Run::AnyLine() {
  switch (input.Choice(8)) {
    case 0:
      return input.Text(2u * input.Byte());
    case 1:
      return kQueries[input.Choice(std::size(kQueries))];
    case 2:
      return kUsualCommands[input.Choice(std::size(kUsualCommands))] + input.Text(input.Choice(2));
    case 3:
    case 4:
      return AnyMotion(input);
    case 5:
      return input.Choice(2) == 0 ? AnyClock(input) : AnySite(input);
    default:
      return AnySetting(input);
  }
}

void Run::CheckAnswer(const std::string& line) {
  const std::string key = ModelKeyOf(line);
  const std::string before = Everything();
  const CommandOutcome outcome = interpreter.Answer(line);
  if (!IsKnownKey(key)) {
    RequireSame(outcome.reply, "$ERROR=COMMAND", "the answer to a line without a known key");
    RequireSame(Everything(), before, "an unknown key changes nothing");
    return;
  }
  RequireSame(outcome.reply.substr(0, 7), key + "=", "the reply's prefix");
  const std::string value = outcome.reply.substr(7);
  Require(!value.empty() && value.size() < 200, "the length of the reply");
  for (const char c : outcome.reply + outcome.note) {
    Require(c >= ' ' && c < '\x7f', "reply and note are printable");
  }
  const auto values = ModelValues(line);
  if (!values || value == "ERROR" || value == "BELOWHORIZON") {
    RequireSame(Everything(), before, "queries and refusals change nothing");
  }
  if (!values) return;
  if (const auto taken = IsTaken(key, *values)) {
    RequireSame(line + (value == "1" ? " taken" : " refused"),
                line + (*taken ? " taken" : " refused"), "what is taken");
  }
  if (value == "1") CheckTaken(key, *values);
}

void Run::CheckTaken(const std::string& key, const std::vector<std::string>& values) {
  char text[1024];
  if (key == "$SYLOC") {
    const auto longitude = ModelDecimal(values[0], -180.0, 180.0);
    const auto latitude = ModelDecimal(values[1], -90.0, 90.0);
    std::snprintf(text, sizeof text, "%.3f,%.3f,%ld", *longitude, *latitude,
                  *ModelWhole(values[2], -12, 14));
  } else if (key == "$MTAGS" || key == "$MTCOM") {
    std::snprintf(text, sizeof text, "%.6f,%.6f", *ModelDecimal(values[0], 0.0, 1000.0),
                  *ModelDecimal(values[1], 0.0, 1000.0));
  } else if (key == "$MTGTS") {
    std::snprintf(text, sizeof text, "%ld", *ModelWhole(values[0], 0, 1000000));
  } else {
    return;
  }
  RequireSame(Ask(key + "?"), key + "=" + text, "a setting reads back");
}

std::string Run::Everything() {
  const double numbers[] = {mount.Axes().polarDegrees,
                            mount.Axes().fromPoleDegrees,
                            mount.UtcSeconds(),
                            mount.CurrentSite().longitudeDegrees,
                            mount.CurrentSite().latitudeDegrees,
                            mount.CurrentSite().zoneHours * 1.0,
                            mount.MeridianStopDegrees(),
                            mount.MeridianGotoDegrees(),
                            static_cast<double>(mount.State()),
                            mount.IsMovedByHand() ? 1.0 : 0.0,
                            mount.StoppedAtLimit() ? 1.0 : 0.0};
  return std::string(reinterpret_cast<const char*>(numbers), sizeof numbers) + Ask("$MTAGS?") +
         Ask("$MTGTS?");
}

// The driver takes this line apart by position.
void Run::CheckStatusLine() {
  const std::string line = Ask("$MTSTA?");
  const std::vector<std::string> fields = ModelFields(line.substr(7), ",");
  Require(fields.size() == 11, "eleven fields of a status");
  const SkyPosition position = mount.Position();
  Require(ModelInt(fields[1]) == static_cast<int>(mount.State()), "the state in the status");
  Require(std::fabs(ModelDouble(fields[0]) - mount.UtcSeconds() / 86400.0) < 1e-7,
          "the clock in the status");
  Require(std::fabs(ModelDouble(fields[8]) - position.raHours) < 1e-7,
          "the right ascension in the status");
  Require(std::fabs(ModelDouble(fields[9]) - position.decDegrees) < 1e-6,
          "the declination in the status");
}

void Run::CheckClockLine() {
  const std::vector<std::string> fields = ModelFields(Ask("$SYUTM?").substr(7), ",");
  Require(fields.size() == 6, "six fields of a clock");
  CivilTime time = {ModelInt(fields[0]), ModelInt(fields[1]), ModelInt(fields[2]),
                    ModelInt(fields[3]), ModelInt(fields[4]), ModelInt(fields[5]) * 1.0};
  // A local time of the last day that is taken may be one of the next year in universal time.
  if (time.year == 1899 || time.year == 2200) return;
  const auto seconds = SecondsFromCivil(time);
  Require(seconds.has_value(), "the clock shows a time that there is");
  Require(std::fabs(mount.UtcSeconds() - *seconds - 0.5) <= 0.5 + 1e-5, "the clock shows its time");
}

void Run::CheckMount() const {
  const SkyPosition position = mount.Position();
  const AxisPair axes = mount.Axes();
  Require(std::isfinite(axes.polarDegrees) && std::isfinite(axes.fromPoleDegrees), "finite axes");
  Require(position.raHours >= 0.0 && position.raHours < 24.0, "a right ascension in its range");
  Require(position.decDegrees >= -90.0 && position.decDegrees <= 90.0,
          "a declination in its range");
  Require(mount.State() >= MountState::kStopped && mount.State() <= MountState::kParked,
          "a state that there is");
  Require(!(mount.IsMovedByHand() && mount.State() == MountState::kSlewing),
          "no hand move during a slew");
}

}  // namespace
}  // namespace simulator

void FuzzCommandInterpreter(FuzzInput input) {
  simulator::Run run(input);
  for (int step = 0; step < simulator::kMaxSteps && !input.IsEmpty(); ++step) {
    run.Step();
    run.CheckMount();
  }
  run.CheckLines();
}
