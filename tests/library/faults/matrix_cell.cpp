// SPDX-License-Identifier: MIT
#include "tests/library/faults/matrix_cell.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <future>

#include "simulator/formatted.h"
#include "simulator/random_bits.h"
#include "tests/support/eventually.h"
#include "tests/support/file_text.h"

namespace {

using simulator::Formatted;
using namespace std::chrono_literals;

constexpr double kAtOnceMs = 100.0;    // what every call may take but those that connect or end
constexpr double kPatienceMs = 500.0;  // of an exchange
constexpr double kUnclearMs = 100.0;   // before and after its end
constexpr double kCycleSleepMs = 100.0;
constexpr double kStepMs = 30.0;      // the driver's own work between two exchanges
constexpr double kWindowMs = 500.0;   // to open a message, and from its answer to the return
constexpr double kOpeningMs = 250.0;  // of the hand controller, a window with all its buttons
constexpr double kEndWorkMs = 100.0;  // the journal's file, the thread's end
constexpr int kPulseMs = 40;
constexpr double kPulseGapMs = 50.0;
constexpr double kPulseTrainMs = 4 * (kPulseMs + kPulseGapMs);
constexpr int kMostExchangesOfStart = 7;
constexpr int kMostExchangesOfCheck = 4;
constexpr int kQueuedCommands = 6;
constexpr auto kHangs = 30s;
constexpr auto kSoon = 10s;
constexpr double kTarget[2] = {83.633, 22.0145};
constexpr SiteTime kTime = {2024, 1, 15, 21, 7, 30.0, 9.0};
constexpr SiteLocation kSite = {35.681, 139.767, 40.0};

/// How long a stop takes to the wire at most, and how many waits that is made of: at the end of
/// each the machine may be late.
struct StopLimit {
  double ms;
  int waits;
};

/// @return what may be performed in that phase when the host asks for the stop, with an answer to
///         nothing, then a poll, then the sleep.
StopLimit LongestStop(Phase phase) {
  constexpr double kPollAndSleepMs = kPatienceMs + kCycleSleepMs;
  switch (phase) {
    case Phase::kHandOff:
      return {6 * kPatienceMs + kPollAndSleepMs, 6 + 2};
    case Phase::kPulses:
      return {4 * kPatienceMs + kPulseTrainMs + kPollAndSleepMs, 4 * 2 + 2};
    case Phase::kGoto:
    case Phase::kHandMove:
    case Phase::kClose:
      return {kPatienceMs + kPollAndSleepMs, 1 + 2};
    case Phase::kOpen:
    case Phase::kHandshake:
      return {kCycleSleepMs + kStepMs, 1};  // the network is good again
    default:
      return {kPollAndSleepMs, 2};
  }
}

/// What was exchanged after one moment and before another, and when the last exchange before the
/// latter was over.
struct Between {
  int polls = 0;
  int others = 0;
  double lastEndMs = -1.0;
};

Between ExchangesBetween(const LinkHistory& history, double fromMs, double toMs) {
  Between between;
  for (const ModelExchange& exchange : history.exchanges) {
    if (exchange.sentMs >= toMs) break;
    between.lastEndMs = exchange.endMs;
    if (exchange.sentMs <= fromMs) continue;
    ++(exchange.command == "$MTSTA?" ? between.polls : between.others);
  }
  return between;
}

/// @param line of the journal: time, command, reason; one of another shape is all command
JournalEntry EntryOf(const std::string& line) {
  const size_t command = line.find(' ');
  const size_t colon = line.find(" : ", command);
  if (command == std::string::npos || colon == std::string::npos) return {line, ""};
  return {line.substr(command + 1, colon - command - 1), line.substr(colon + 3)};
}

std::string Texts(const std::vector<JournalEntry>& entries) {
  std::string texts;
  for (const JournalEntry& entry : entries) {
    texts += Formatted("\n    %s : %s", entry.command.c_str(), entry.reason.c_str());
  }
  return texts;
}

}  // namespace

MatrixCell::MatrixCell(FaultKind kind, Phase phase, uint64_t seed)
    : kind_(kind), phase_(phase), seed_(seed), watch_(driver_, [this] { return NowMs(); }) {
  controller_.LooksLikeAMount();
  // Every poll gets a position of its own.
  std::vector<simulator::ScriptedReply> replies;
  for (int i = 0; i < 500; ++i) {
    statuses_.push_back(
        Formatted("$MTSTA=60000.5,1,0,0,0,45.0,10,20,%.6f,22.5,4", 1.0 + i / 100.0));
    replies.emplace_back(statuses_.back());
  }
  controller_.AnswersInTurn("$MTSTA?", replies);
  controller_.StartWireLog();
  SetJournal("cell");
}

MatrixCell::~MatrixCell() {
  driver_.End(nullptr);
}

CellResult MatrixCell::Run() {
  Begin();
  result_.failedStart = !started_;
  if (started_) {
    CallDuringTheSession();
    MakeTheRequest();
    Stop();
  }
  End();
  controller_.SetFaults({});
  RunAnotherSession();

  // What came at the very end of the driver's patience may have been taken or not. The journal
  // tells, and all the rest has to follow from it.
  const LinkHistory history =
      HistoryOfJournal(controller_.WireLog(), kUnclearMs + machine_.LongestMs(), Journal("next"));
  ExpectStopInTime(history);
  ExpectPositionsFromReplies(history);
  ExpectJournals(history);
  const auto [name, durationMs] = watch_.LongestCall();
  // The machine's delay is not added: a cell in which it was at work is run again.
  ExpectInTime(durationMs <= kAtOnceMs, Formatted("%s took %.0f ms", name.c_str(), durationMs));
  result_.callMs = durationMs;
  result_.machineDelayMs = machine_.LongestMs();
  result_.narrowMs = history.narrowMs;
  result_.exchanges = static_cast<int>(history.exchanges.size());
  result_.failures = static_cast<int>(history.failures.size());
  for (const simulator::WireDatagram& datagram : controller_.WireLog()) {
    result_.record += simulator::WireRecordLine(datagram) + "\n";
  }
  return result_;
}

// --- The session ---------------------------------------------------------------------------------

void MatrixCell::Begin() {
  if (phase_ == Phase::kOpen) {
    controller_.SetFaults(Faults());
    CheckController();
  }
  if (phase_ <= Phase::kHandshake) {
    controller_.SetFaults(Faults());
    StartSession();
    return;
  }
  StartSession();
  Expect(started_, "the start failed without a fault");
  Expect(Eventually([&] { return !watch_.Positions().empty(); }, kSoon), "no first position");
  sentBefore_ = controller_.CountOf(RequestCommand());
  controller_.SetFaults(Faults());
}

void MatrixCell::CheckController() {
  char version[32] = "";
  const double calledMs = NowMs();
  result_.checkMs = Timed(
      [&] {
        driver_.Check(nullptr, controller_.Address().c_str(), nullptr, version, sizeof version,
                      nullptr, 0);
      },
      "TelescopeCheck");
  const double returnedMs = NowMs();
  const Between during = ExchangesBetween(History(), calledMs, returnedMs);
  Expect(during.others <= kMostExchangesOfCheck, "a check made more exchanges than four");
  ExpectWithin(returnedMs - std::max(during.lastEndMs, calledMs), kStepMs, "the check's return");
}

void MatrixCell::StartSession() {
  const double calledMs = NowMs();
  result_.startMs = Timed(
      [&] { started_ = driver_.Start(nullptr, controller_.Address().c_str(), nullptr, 0) == 1; },
      "TelescopeStart");
  const double returnedMs = NowMs();
  const LinkHistory history = History();
  // The worker polls already.
  double lastEndMs = calledMs;
  int exchanges = 0;
  for (const ModelExchange& exchange : history.exchanges) {
    if (exchange.sentMs < calledMs || exchange.command == "$MTSTA?") continue;
    lastEndMs = exchange.endMs;
    ++exchanges;
  }
  Expect(exchanges <= kMostExchangesOfStart, "a start made more exchanges than seven");
  if (started_) {
    ExpectWithin(returnedMs - lastEndMs, kStepMs, "the start's return");
    return;
  }
  Expect(watch_.BoxFoundMs() > calledMs, "the start failed without a message");
  ExpectWithin(watch_.BoxFoundMs() - lastEndMs, kWindowMs, "the message of a failed start");
  ExpectWithin(returnedMs - watch_.BoxFoundMs(), kWindowMs, "the return after the message");
  result_.startMs -= returnedMs - watch_.BoxFoundMs();
}

void MatrixCell::SetJournal(const char* prefix) {
  const std::string folder = folder_.Narrow() + "\\";
  watch_.AtOnce("SetLogPath", [&] { return driver_.SetLogPath(nullptr, folder.c_str()); });
  watch_.AtOnce("SetLogPrefix", [&] { return driver_.SetLogPrefix(nullptr, prefix); });
}

// What else may be called at any time, and returns at once while a session runs.
void MatrixCell::CallDuringTheSession() {
  SetJournal("cell");
  const char* address = controller_.Address().c_str();
  const int again =
      watch_.AtOnce("Start", [&] { return driver_.Start(nullptr, address, nullptr, 0); });
  Expect(again == 0, "a second start during the session");
  char version[32] = "";
  const int exchangesBefore = static_cast<int>(controller_.CountOf("$SYVER?"));
  const int checked = watch_.AtOnce("Check", [&] {
    return driver_.Check(nullptr, address, nullptr, version, sizeof version, nullptr, 0);
  });
  Expect(checked == 1, "a check during the session was not answered");
  Expect(controller_.CountOf("$SYVER?") == exchangesBefore, "a check during the session was sent");
  const double calledMs = NowMs();
  driver_.Dialog(nullptr, 1);
  result_.dialogMs = NowMs() - calledMs;
  ExpectWithin(result_.dialogMs, kOpeningMs, "the hand controller's opening");
  watch_.AtOnce("Dialog with 0", [&] { return driver_.Dialog(nullptr, 0); });
}

void MatrixCell::MakeTheRequest() {
  switch (phase_) {
    case Phase::kHandOff:
      watch_.AtOnce("BaseSetting", [&] { return driver_.BaseSetting(nullptr, &kTime, &kSite); });
      break;
    case Phase::kGoto:
      watch_.AtOnce("Look", [&] { return driver_.Look(nullptr, kTarget); });
      break;
    case Phase::kPulses:
      watch_.AtOnce("SlewPulseDuration", [&] {
        return driver_.SlewPulseDuration(nullptr, kPulseMs, kPulseMs, kPulseMs, kPulseMs, 0.5, 0.5);
      });
      break;
    case Phase::kHandMove:
      for (int i = 0; i < 3; ++i) {
        watch_.AtOnce("Slew", [&] { return driver_.Slew(nullptr, TELESCOPE_NORTH, 1, 4); });
      }
      break;
    case Phase::kClose:
    case Phase::kQueue:
      QueueSix();
      return;
    default:
      break;
  }
  WaitForThePhase();
}

// All of these wait, but for the one that the worker happens to take at once.
void MatrixCell::QueueSix() {
  queuedMs_ = NowMs();
  watch_.AtOnce("Home", [&] { return driver_.Home(nullptr); });
  watch_.AtOnce("Park", [&] { return driver_.Park(nullptr); });
  watch_.AtOnce("UnPark", [&] { return driver_.UnPark(nullptr); });
  watch_.AtOnce("AlignReset", [&] { return driver_.AlignReset(nullptr); });
  watch_.AtOnce("Sync", [&] { return driver_.Sync(nullptr, kTarget); });
  watch_.AtOnce("SetGuideSpeed", [&] { return driver_.SetGuideSpeed(nullptr, 0.5, 0.5); });
}

// A hand-off sends this one whatever becomes of the others.
std::string MatrixCell::RequestCommand() const {
  return phase_ == Phase::kHandOff ? "$SYLOC=" : PhaseCommand(phase_, seed_);
}

void MatrixCell::WaitForThePhase() {
  const std::string command = RequestCommand();
  if (command.empty() || phase_ == Phase::kStop) return;
  const auto sent = [&] { return controller_.CountOf(command) > sentBefore_; };
  Expect(Eventually([&] { return sent() || LinkIsClosed(); }, kSoon),
         "the request was not sent: " + command);
}

void MatrixCell::Stop() {
  if (phase_ == Phase::kQueue) return;
  // Anywhere in a cycle, but the same place again for the same seed.
  if (phase_ != Phase::kClose) {
    const auto place = static_cast<uint64_t>(kind_) * kPhases + static_cast<uint64_t>(phase_);
    Sleep(simulator::RandomBits(seed_).Below(place, 150));
  }
  stopCalledMs_ = NowMs();
  watch_.AtOnce("Stop", [&] { return driver_.Stop(nullptr); });
  if (phase_ == Phase::kClose) return;  // the end follows at once
  Eventually([&] { return controller_.Saw("$MTSTP=1") || LinkIsClosed(); }, kSoon);
}

void MatrixCell::End() {
  const double calledMs = NowMs();
  endCalledMs_ = calledMs;
  result_.endMs = Timed([&] { driver_.End(nullptr); }, "TelescopeEnd");
  const double returnedMs = NowMs();
  const Between during = ExchangesBetween(History(), SurelyAfter(calledMs), returnedMs);
  Expect(during.polls <= 1, Formatted("the end took %d polls", during.polls));
  // The command being performed, the stop's two, an unpark behind a hand-off.
  const int most = phase_ == Phase::kQueue ? kQueuedCommands : 4;
  Expect(during.others <= most, Formatted("the end took %d commands", during.others));
  if (phase_ == Phase::kQueue) ExpectQueueWorkedOff();
  // A train of pulses goes on without a link, and nothing but the train's length tells its end.
  const bool pulses = phase_ == Phase::kPulses && !controller_.Saw("$MTSTP=1");
  ExpectWithin(returnedMs - std::max(during.lastEndMs, calledMs),
               kCycleSleepMs + kEndWorkMs + (pulses ? kPulseTrainMs : 0.0), "the end's return",
               pulses ? 1 + 4 : 1);
}

// What the worker does when the end is called, a poll at most, its sleep, and all that was queued.
void MatrixCell::ExpectQueueWorkedOff() {
  constexpr const char* kInTheirOrder[kQueuedCommands] = {"$MTTGT=1,", "$MTTGT=2,", "$MTTGT=3,",
                                                          "$ALINI=0",  "$ALIGN=3,", "$MTAGS="};
  ExpectWithin(result_.endMs,
               kPatienceMs + kCycleSleepMs + kQueuedCommands * kPatienceMs + kEndWorkMs,
               "the end with six commands in the queue", 2 + kQueuedCommands);
  // With doubled or split replies the driver has its answer, and ends, before the controller has
  // read the command.
  Eventually([&] { return controller_.Saw("$MTAGS=0.500000,0.500000") || LinkIsClosed(); }, kSoon);
  const LinkHistory history = History();
  int sent = 0;
  for (const ModelExchange& exchange : history.exchanges) {
    if (exchange.sentMs < queuedMs_ || exchange.command == "$MTSTA?") continue;
    const bool next = sent < kQueuedCommands && exchange.command.starts_with(kInTheirOrder[sent]);
    Expect(next, "out of turn: " + exchange.command);
    ++sent;
  }
  if (sent == kQueuedCommands) return;
  result_.queueCut = LinkIsClosed();
  Expect(result_.queueCut, Formatted("%d of the six commands were sent", sent));
}

void MatrixCell::RunAnotherSession() {
  SetJournal("next");
  const size_t before = watch_.Positions().size();
  int32_t result = 0;
  Timed([&] { result = driver_.Start(nullptr, controller_.Address().c_str(), nullptr, 0); },
        "the next TelescopeStart");
  Expect(result == 1, "the next session did not start");
  Expect(Eventually([&] { return watch_.Positions().size() > before; }, kSoon),
         "the next session has no position");
  Timed([&] { driver_.End(nullptr); }, "the next TelescopeEnd");
}

// --- What must have held
// ----------------------------------------------------------------------------

void MatrixCell::ExpectStopInTime(const LinkHistory& history) {
  if (stopCalledMs_ < 0.0) return;
  const auto stop = std::find_if(
      history.exchanges.begin(), history.exchanges.end(), [&](const ModelExchange& exchange) {
        return exchange.sentMs > stopCalledMs_ && exchange.command == "$MTSTP=1";
      });
  if (stop == history.exchanges.end()) {
    const auto closing =
        std::find_if(history.failures.begin(), history.failures.end(),
                     [](const JournalEntry& entry) { return entry.reason == "Socket Close"; });
    result_.stopKept = closing != history.failures.end();
    Expect(result_.stopKept, "the stop was never sent");
    return;
  }
  result_.stopMs = stop->sentMs - stopCalledMs_;
  const StopLimit limit = LongestStop(phase_);
  ExpectWithin(result_.stopMs, limit.ms, "the stop", limit.waits);
  const Between before = ExchangesBetween(history, SurelyAfter(stopCalledMs_), stop->sentMs);
  Expect(before.polls <= 1, Formatted("%d polls before the stop", before.polls));
  // What belongs to the command that was being performed; without that the one that was being
  // taken.
  const int rest = phase_ == Phase::kHandOff ? 6 : phase_ == Phase::kPulses ? 4 : 1;
  Expect(before.others <= rest, Formatted("%d commands before the stop", before.others));
  ExpectShortPausesBefore(history, *stop);
}

// Each pause between two exchanges has its limit: that of the whole has room for a long one.
void MatrixCell::ExpectShortPausesBefore(const LinkHistory& history, const ModelExchange& stop) {
  for (size_t i = 1; i < history.exchanges.size(); ++i) {
    const ModelExchange& before = history.exchanges[i - 1];
    const ModelExchange& next = history.exchanges[i];
    if (next.sentMs <= stopCalledMs_) continue;
    const bool pulsed = phase_ == Phase::kPulses && before.command.starts_with("$MTMV2=");
    const bool slept = before.command == "$MTSTA?";
    const double sleepMs = (slept ? kCycleSleepMs : 0.0) + (pulsed ? kPulseMs + kPulseGapMs : 0.0);
    // The exchange before may have ended late, too.
    ExpectWithin(next.sentMs - std::max(before.endMs, stopCalledMs_), sleepMs + kStepMs,
                 ("from " + before.command + " to " + next.command).c_str(), 2);
    if (&next == &stop) return;
  }
}

void MatrixCell::ExpectPositionsFromReplies(const LinkHistory& history) {
  const std::vector<SkyPosition> polled = PolledPositions(history);
  auto next = polled.begin();
  for (const SkyPosition& position : watch_.Positions()) {
    next = std::find(next, polled.end(), position);
    Expect(next != polled.end(),
           Formatted("the position %g, %g was in no reply", position.ra, position.dec));
    if (next == polled.end()) return;
  }
  for (const ModelExchange& exchange : history.exchanges) {
    if (exchange.command != "$MTSTA?" || !exchange.reply.starts_with("$MTSTA")) continue;
    result_.oddPositions +=
        std::find(statuses_.begin(), statuses_.end(), exchange.reply) == statuses_.end();
  }
}

void MatrixCell::ExpectJournals(const LinkHistory& history) {
  const std::vector<JournalEntry> all = Journal("next");
  Expect(all == history.failures,
         "journal:" + Texts(all) + "\n  instead of:" + Texts(history.failures));
  // What failed after the host had asked for the end is only in the next session's.
  const std::vector<JournalEntry> first = Journal("cell");
  Expect(first.size() <= all.size() && std::equal(first.begin(), first.end(), all.begin()),
         "the first session's journal:" + Texts(first));
  const double surelyMs = endCalledMs_ - kStepMs - machine_.LongestMs();
  const auto before = std::count_if(history.failedMs.begin(), history.failedMs.end(),
                                    [&](double failedMs) { return failedMs < surelyMs; });
  const auto written = static_cast<ptrdiff_t>(first.size());
  Expect(written >= before, Formatted("the first session's journal has %d lines, but %d exchanges "
                                      "had failed before the end",
                                      static_cast<int>(written), static_cast<int>(before)));
  Expect(JournalFiles("cell").size() == (first.empty() ? 0u : 1u), "an empty journal, or two");
}

std::vector<std::filesystem::path> MatrixCell::JournalFiles(const std::string& prefix) const {
  std::vector<std::filesystem::path> files;
  for (const auto& file : std::filesystem::directory_iterator(folder_.Path())) {
    if (file.path().filename().string().starts_with(prefix)) files.push_back(file.path());
  }
  return files;
}

std::vector<JournalEntry> MatrixCell::Journal(const std::string& prefix) const {
  std::vector<JournalEntry> entries;
  for (const std::filesystem::path& file : JournalFiles(prefix)) {
    std::string text = ReadWholeFile(file).value_or("");
    for (size_t end = text.find("\r\n"); end != text.npos; end = text.find("\r\n")) {
      entries.push_back(EntryOf(text.substr(0, end)));
      text.erase(0, end + 2);
    }
  }
  return entries;
}

void MatrixCell::Expect(bool holds, const std::string& what) {
  if (!holds) result_.broken.push_back(what);
}

void MatrixCell::ExpectInTime(bool holds, const std::string& what) {
  if (!holds) result_.late.push_back(what);
}

void MatrixCell::ExpectWithin(double tookMs, double limitMs, const char* what, int waits) {
  const double delayMs = machine_.LongestMs();
  ExpectInTime(tookMs <= limitMs + waits * delayMs,
               Formatted("%s took %.0f ms, not %.0f and %d times the machine's %.0f", what, tookMs,
                         limitMs, waits, delayMs));
}

double MatrixCell::Timed(const std::function<void()>& call, const char* name) {
  const double beginMs = NowMs();
  auto done = std::async(std::launch::async, call);
  if (done.wait_for(kHangs) != std::future_status::ready) {
    // Nothing that the thread uses may go, so the program has to.
    std::printf("%s does not return: %s in %s, seed %d\n", name, FaultName(kind_),
                PhaseName(phase_), static_cast<int>(seed_));
    std::fflush(stdout);
    std::_Exit(EXIT_FAILURE);
  }
  return NowMs() - beginMs;
}
