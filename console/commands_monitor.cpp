// SPDX-License-Identifier: MIT
// monitor, and status --watch, which is the same on one line.
#include <cstdio>
#include <ctime>
#include <optional>

#include "console/commands.h"
#include "console/failure.h"
#include "console/mount_motion.h"
#include "console/mount_poll.h"
#include "console/sky_distance.h"
#include "console/steady_time.h"

namespace velquinctl {
namespace {

constexpr int kLookMs = 100;
constexpr const char* kNoSpeed = "           ";  // as wide as a speed
constexpr const char* kGaps =
    "answers of the controller were missing: positions may have been up to 7 seconds old";
constexpr const char* kHeader =
    "time                 right ascension  declination     speed  state";

/// One look at the mount.
struct Row {
  double seconds = 0.0;  // since the beginning
  MountState state;
  std::optional<double> degreesPerSecond;  // empty for the first row
  double changedSeconds = 0.0;             // when the position was last another
};

std::string LocalTimeText() {
  const std::time_t now = std::time(nullptr);
  char text[32] = {};
  // The runtime library of Windows knows neither %F nor %T.
  std::strftime(text, sizeof text, "%Y-%m-%d %H:%M:%S", std::localtime(&now));
  return text;
}

/// @return the state; never only "ready" for a mount that slews.
std::string StateText(const Row& row) {
  std::string text = ReadyText(row.state);
  if (!row.degreesPerSecond) return text + ", speed not known yet";
  if (*row.degreesPerSecond >= kSlewDegreesPerSecond) return text + ", slewing";
  // A mount that tracks reports the same position as one whose answers are missing.
  const int unchanged = static_cast<int>(row.seconds - row.changedSeconds);
  if (unchanged < 1) return text;
  return text + ", position unchanged for " + std::to_string(unchanged) + " s";
}

std::string RowText(const Row& row) {
  if (!row.state.valid) return LocalTimeText() + "  no answer";
  char speed[32];
  std::snprintf(speed, sizeof speed, "%8.4f\u00b0/s", row.degreesPerSecond.value_or(0.0));
  return LocalTimeText() + "  " + PositionText(row.state.position) + "  " +
         (row.degreesPerSecond ? speed : kNoSpeed) + "  " + StateText(row);
}

JsonObject RowObject(const Row& row) {
  JsonObject object;
  object.Add("localTime", LocalTimeText()).Add("elapsedSeconds", row.seconds);
  object.Append(StateObject(row.state));
  object.Add("unchangedSeconds", row.seconds - row.changedSeconds);
  if (!row.degreesPerSecond) return object.AddNull("speedDegreesPerSecond");
  return object.Add("speedDegreesPerSecond", *row.degreesPerSecond);
}

/// Measures the speed against the last row that was kept, so that it is a mean and not noise.
/// @param newest the row before, kept or not
Row Look(const Session& session, const Row& last, const Row& newest, double begin) {
  Row row{SteadySeconds() - begin, session.Read(), {}, newest.changedSeconds};
  const SkyPosition& position = row.state.position;
  if (AxisDistanceDegrees(newest.state.position, position) > 0.0) row.changedSeconds = row.seconds;
  const double passed = row.seconds - last.seconds;
  if (row.state.valid && last.state.valid && passed > 0.0) {
    row.degreesPerSecond = SkyDistanceDegrees(last.state.position, row.state.position) / passed;
  }
  return row;
}

/// Shows a row that stays.
void Keep(const Output& output, ProgressLine& line, const Row& row) {
  if (output.Json()) {
    output.Answer({}, RowObject(row));
  } else {
    line.Keep(RowText(row));
  }
}

/// Shows rows until the time is over. @throws Failure on Ctrl-C
void ShowRows(const CommandContext& context, const MonitorAction& action) {
  const Output& output = context.output;
  const Session& session = context.Connect();
  const double begin = SteadySeconds();
  const bool live = output.Progress() == ProgressMode::kLive && !output.Json();
  ProgressLine line(live ? ProgressMode::kLive : ProgressMode::kNone, WriteOut);
  if (!output.Json() && !action.oneLine) WriteOut(std::string(kHeader) + '\n');

  Row last{0.0, session.Read(), {}};
  Row newest = last;
  if (!live) Keep(output, line, last);
  for (;;) {
    context.interrupt.SleepMs(kLookMs);
    const Row row = Look(session, last, newest, begin);
    newest = row;
    const bool over = action.forSeconds && row.seconds >= *action.forSeconds;
    const bool due = row.seconds - last.seconds >= action.intervalSeconds - kLookMs / 2000.0;
    if (live) line.Show(row.seconds, RowText(row));
    if (over || (due && !(live && action.oneLine))) Keep(output, line, row);
    if (over) return;
    if (due) last = row;
  }
}

/// Tells, once the session has ended, that the rows may have shown old positions.
void TellGaps(const CommandContext& context) {
  if (context.sessions.Current() == nullptr) return;
  if (!context.sessions.End(EndProbe::kSkip).ReadingsComplete())
    WriteErrorLine(std::string(kProgramName) + ": " + kGaps);
}

}  // namespace

void PerformMonitor(const CommandContext& context, const MonitorAction& action) {
  try {
    ShowRows(context, action);
  } catch (const Failure&) {
    TellGaps(context);
    throw;
  }
  TellGaps(context);
}

}  // namespace velquinctl
