// SPDX-License-Identifier: MIT
#include "console/journal_outcome.h"

#include <optional>

namespace velquinctl {
namespace {

constexpr std::string_view kMismatch = "Return Value Mismatch";
constexpr std::string_view kLinkClosed = "Socket Close";
constexpr std::string_view kSlow = "TimeOut(";  // with a number: answered after 0.5 s

struct JournalLine {
  std::string_view command;
  std::string_view reason;
};

std::optional<JournalLine> ParseLine(std::string_view line) {
  static constexpr std::string_view kColon = " : ";
  const size_t begin = line.find(' ');
  const size_t end = line.rfind(kColon);
  if (begin == line.npos || end == line.npos || end <= begin + 1) return {};
  if (line[begin + 1] != '$') return {};
  return JournalLine{line.substr(begin + 1, end - begin - 1), line.substr(end + kColon.size())};
}

/// Takes the first line off, without its line end. @return nothing for one that has no end.
std::optional<std::string_view> TakeLine(std::string_view& text) {
  const size_t end = text.find('\n');
  if (end == text.npos) return {};
  std::string_view line = text.substr(0, end);
  if (line.ends_with('\r')) line.remove_suffix(1);
  text.remove_prefix(end + 1);
  return line;
}

void MissTarget(std::string_view command, SessionOutcome& outcome) {
  if (command.starts_with("$MTTGT=1,")) return outcome.Miss(MountCommand::kHome);
  if (command.starts_with("$MTTGT=2,")) return outcome.Miss(MountCommand::kPark);
  if (!command.ends_with(",Star")) return outcome.Miss(MountCommand::kGoto);
  outcome.Miss(MountCommand::kUnpark);
  outcome.Miss(MountCommand::kSite);  // the hand-over ends with it when the mount is ready
}

/// Moves have one key in common, so a late answer to one may have passed for that of the next: when
/// one is missed, all are, and the second half of a stop is such a move.
void MissMoves(SessionOutcome& outcome) {
  outcome.Miss(MountCommand::kHandMove);
  outcome.Miss(MountCommand::kPulse);
  outcome.Miss(MountCommand::kStop);
}

void MissCommand(std::string_view command, SessionOutcome& outcome) {
  if (command.starts_with("$MTTGT=")) return MissTarget(command, outcome);
  if (command.starts_with("$MTMV2=")) return MissMoves(outcome);
  if (command == "$MTSTA?") return outcome.MissReading();
  static constexpr struct {
    std::string_view key;
    MountCommand command;
  } kCommands[] = {
      {"$MTSTP=", MountCommand::kStop},       {"$ALIGN=", MountCommand::kSync},
      {"$ALINI=", MountCommand::kAlignReset}, {"$MTAGS=", MountCommand::kGuideSpeed},
      {"$SYLOC=", MountCommand::kSite},       {"$SYLTM=", MountCommand::kSite},
      {"$MTINI=", MountCommand::kSite},       {"$MTCOM=", MountCommand::kMeridian},
  };
  for (const auto& known : kCommands) {
    if (command.starts_with(known.key)) return outcome.Miss(known.command);
  }
}

void Judge(const JournalLine& line, SessionOutcome& outcome) {
  if (line.reason == kLinkClosed) return outcome.LoseTrack();
  if (line.reason.starts_with(kSlow)) {
    // Answered after all; but whoever counts on the time between two readings must not.
    outcome.MissReading();
    return;
  }
  MissCommand(line.command, outcome);
  if (line.reason != kMismatch) return;
  // Answers have shifted: each command gets that of the one before. A move may have got that of
  // another move.
  outcome.MissReading();
  outcome.Miss(MountCommand::kHandMove);
  outcome.Miss(MountCommand::kPulse);
}

}  // namespace

SessionOutcome OutcomeFromJournal(std::string_view journal) {
  SessionOutcome outcome;
  while (!journal.empty()) {
    const auto text = TakeLine(journal);
    const auto line = text ? ParseLine(*text) : std::nullopt;
    if (!line) return SessionOutcome::Unknown();
    Judge(*line, outcome);
  }
  return outcome;
}

bool ProbeWasSent(std::string_view before, std::string_view after) {
  // The connecting asks the same, and its lines are no evidence of the probe.
  if (!after.starts_with(before)) return false;
  after.remove_prefix(before.size());
  std::string_view last;
  while (const auto text = TakeLine(after)) last = *text;
  const auto line = ParseLine(last);
  return line && (line->command == "$SYVER?" || line->command == "$MTMDL?");
}

}  // namespace velquinctl
