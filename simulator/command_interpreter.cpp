// SPDX-License-Identifier: MIT
#include "simulator/command_interpreter.h"

#include "simulator/civil_time.h"
#include "simulator/formatted.h"

namespace simulator {

namespace {

// Rates of a guide pulse, from -1 to 1, are shares of the guide speed; greater ones are hand moves.
double AppliedRate(double rate, double guideSpeed) {
  return rate >= -1.0 && rate <= 1.0 ? rate * guideSpeed : rate;
}

constexpr const char* kDone = "1";
constexpr int kModeOperating = 4;
constexpr int kModeParked = 1;
constexpr double kMaxMoveSeconds = 3600.0;
constexpr double kMaxMoveRate = 1000.0;  // multiples of the sidereal rate

/// A setting that carries one fixed number and no other.
bool IsExactly(const std::vector<std::string>& values, int number) {
  return values.size() == 1 && WholeValue(values[0], number, number).has_value();
}

std::optional<SkyPosition> SkyValue(const std::string& raHours, const std::string& decDegrees) {
  const auto ra = NumberValue(raHours, 0.0, 24.0);
  const auto dec = NumberValue(decDegrees, -90.0, 90.0);
  if (!ra || !dec) return std::nullopt;
  return SkyPosition{*ra, *dec};
}

}  // namespace

const CommandInterpreter::Operation CommandInterpreter::kOperations[] = {
    {"$SYVER", &CommandInterpreter::QueryVersion, nullptr},
    {"$MTMDL", &CommandInterpreter::QueryModel, nullptr},
    {"$MTSTA", &CommandInterpreter::QueryStatus, nullptr},
    {"$MTTGT", nullptr, &CommandInterpreter::SetTarget},
    {"$ALIGN", nullptr, &CommandInterpreter::SetAlignment},
    {"$ALINI", nullptr, &CommandInterpreter::ResetAlignment},
    {"$MTSTP", nullptr, &CommandInterpreter::Stop},
    {"$MTMV2", nullptr, &CommandInterpreter::Move},
    {"$MTAGS", &CommandInterpreter::QueryGuideRates, &CommandInterpreter::SetGuideRates},
    {"$MTCOM", &CommandInterpreter::QueryMeridian, &CommandInterpreter::SetMeridian},
    {"$MTGTS", &CommandInterpreter::QueryGts, &CommandInterpreter::SetGts},
    {"$MTINI", nullptr, &CommandInterpreter::Initialise},
    {"$SYLOC", &CommandInterpreter::QuerySite, &CommandInterpreter::SetSite},
    {"$SYLTM", nullptr, &CommandInterpreter::SetLocalTime},
    {"$SYUTM", &CommandInterpreter::QueryUtc, nullptr},
};

CommandOutcome CommandInterpreter::Answer(std::string_view line) {
  note_.clear();
  const CommandLine command = ParseCommandLine(line);
  for (const Operation& operation : kOperations) {
    if (command.key != operation.key) continue;
    std::string value;
    if (command.isQuery && operation.query != nullptr) value = (this->*operation.query)();
    if (command.isSetting && operation.set != nullptr) {
      value = (this->*operation.set)(command.values);
    }
    return {command.key + "=" + (value.empty() ? "ERROR" : value), note_};
  }
  return {"$ERROR=COMMAND", ""};
}

std::string CommandInterpreter::QueryVersion() const {
  return VELQUIN_VERSION " simulator";
}

std::string CommandInterpreter::QueryModel() const {
  return Formatted("1,%.3f,%.3f", model_.Limits().topRate, model_.Limits().acceleration);
}

std::string CommandInterpreter::QueryStatus() const {
  const MountState state = model_.State();
  const SkyPosition position = model_.Position();
  return Formatted("%.8f,%d,%d,%d,%.6f,%.6f,%.6f,%.6f,%.8f,%.7f,%d", model_.UtcSeconds() / 86400.0,
                   static_cast<int>(state), model_.StoppedAtLimit() ? 1 : 0,
                   model_.IsMovedByHand() ? 1 : 0, model_.Axes().polarDegrees,
                   model_.DeclinationCircleDegrees(), MountModel::kPark.polarDegrees,
                   MountModel::kPark.fromPoleDegrees, position.raHours, position.decDegrees,
                   state == MountState::kParked ? kModeParked : kModeOperating);
}

std::string CommandInterpreter::QuerySite() const {
  const Site& site = model_.CurrentSite();
  return Formatted("%.3f,%.3f,%d", site.longitudeDegrees, site.latitudeDegrees, site.zoneHours);
}

std::string CommandInterpreter::QueryUtc() const {
  const CivilTime time = CivilFromSeconds(model_.UtcSeconds());
  return Formatted("%d,%d,%d,%d,%d,%d", time.year, time.month, time.day, time.hour, time.minute,
                   static_cast<int>(time.second));
}

std::string CommandInterpreter::QueryGuideRates() const {
  return Formatted("%.6f,%.6f", guideRates_[0], guideRates_[1]);
}

std::string CommandInterpreter::QueryMeridian() const {
  return Formatted("%.6f,%.6f", model_.MeridianStopDegrees(), model_.MeridianGotoDegrees());
}

std::string CommandInterpreter::QueryGts() const {
  return std::to_string(gts_);
}

std::string CommandInterpreter::SetTarget(const Values& values) {
  // The name may hold commas of its own, so there is no upper count.
  if (values.size() < 4) return "";
  const auto mode = WholeValue(values[0], 1, 3);
  if (!mode) return "";
  if (*mode == 3) {
    const auto target = SkyValue(values[1], values[2]);
    return target ? GotoReply(model_.GotoSky(*target)) : "";
  }
  const auto polar = NumberValue(values[1], -360.0, 720.0);
  const auto fromPole = NumberValue(values[2], -180.0, 180.0);
  if (!polar || !fromPole) return "";
  const MountState then = *mode == 1 ? MountState::kStopped : MountState::kParked;
  return GotoReply(model_.GotoAxes({*polar, *fromPole}, then));
}

std::string CommandInterpreter::GotoReply(SlewAnswer answer) {
  if (answer == SlewAnswer::kBelowHorizon) return "BELOWHORIZON";
  if (answer == SlewAnswer::kOutOfReach) return "";
  NoteEndedMove();
  return kDone;
}

std::string CommandInterpreter::SetAlignment(const Values& values) {
  if (values.size() < 4 || !WholeValue(values[0], 1, 3)) return "";
  const auto truth = SkyValue(values[1], values[2]);
  return truth && model_.Align(*truth) ? kDone : "";
}

std::string CommandInterpreter::ResetAlignment(const Values& values) {
  if (!IsExactly(values, 0)) return "";
  model_.ResetAlignment();
  return kDone;
}

std::string CommandInterpreter::Stop(const Values& values) {
  if (!IsExactly(values, 1)) return "";
  model_.Stop();
  NoteEndedMove();
  return kDone;
}

std::string CommandInterpreter::Move(const Values& values) {
  if (values.size() != 3) return "";
  const auto seconds = NumberValue(values[0], 0.0, kMaxMoveSeconds);
  const auto raRate = NumberValue(values[1], -kMaxMoveRate, kMaxMoveRate);
  const auto decRate = NumberValue(values[2], -kMaxMoveRate, kMaxMoveRate);
  if (!seconds || !raRate || !decRate) return "";
  const double ra = AppliedRate(*raRate, guideRates_[0]);
  const double dec = AppliedRate(*decRate, guideRates_[1]);
  if (!model_.Move(*seconds, ra, dec)) return "";
  if (ra != 0.0 || dec != 0.0) {
    note_ = Formatted("moves %.3f s, RA %+.3f, Dec %+.3f x sidereal", *seconds, ra, dec);
  }
  NoteEndedMove();
  return kDone;
}

void CommandInterpreter::NoteEndedMove() {
  const auto ended = model_.TakeEndedMove();
  if (!ended) return;
  if (!note_.empty()) note_ += "; ";
  note_ += Formatted("the move before lasted %.3f of %.3f s", ended->appliedSeconds,
                     ended->askedSeconds);
}

std::string CommandInterpreter::SetGuideRates(const Values& values) {
  if (values.size() != 2) return "";
  const auto first = NumberValue(values[0], 0.0, kMaxMoveRate);
  const auto second = NumberValue(values[1], 0.0, kMaxMoveRate);
  if (!first || !second) return "";
  guideRates_[0] = *first;
  guideRates_[1] = *second;
  note_ = "guide rates " + QueryGuideRates();
  return kDone;
}

std::string CommandInterpreter::SetMeridian(const Values& values) {
  if (values.size() != 2) return "";
  const auto stop = NumberValue(values[0], 0.0, 90.0);
  const auto past = NumberValue(values[1], 0.0, 90.0);
  return stop && past && model_.SetMeridian(*stop, *past) ? kDone : "";
}

std::string CommandInterpreter::SetGts(const Values& values) {
  if (values.size() != 1) return "";
  const auto value = WholeValue(values[0], 0, 1000000);
  if (!value) return "";
  gts_ = *value;
  return kDone;
}

std::string CommandInterpreter::Initialise(const Values& values) {
  if (!IsExactly(values, 1)) return "";
  model_.Reinitialise();
  NoteEndedMove();
  return kDone;
}

std::string CommandInterpreter::SetSite(const Values& values) {
  if (values.size() != 3) return "";
  const auto longitude = NumberValue(values[0], -180.0, 180.0);
  const auto latitude = NumberValue(values[1], -90.0, 90.0);
  const auto zone = WholeValue(values[2], -12, 14);
  if (!longitude || !latitude || !zone) return "";
  model_.SetSite({*longitude, *latitude, *zone});
  return kDone;
}

std::string CommandInterpreter::SetLocalTime(const Values& values) {
  if (values.size() != 6) return "";
  int whole[5];
  for (size_t i = 0; i < 5; ++i) {
    const auto value = WholeValue(values[i], 0, 9999);
    if (!value) return "";
    whole[i] = *value;
  }
  const auto second = NumberValue(values[5], 0.0, 60.0);
  if (!second) return "";
  const auto local = SecondsFromCivil({whole[0], whole[1], whole[2], whole[3], whole[4], *second});
  if (!local) return "";
  model_.SetUtcSeconds(*local - model_.CurrentSite().zoneHours * 3600.0);
  return kDone;
}

}  // namespace simulator
