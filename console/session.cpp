// SPDX-License-Identifier: MIT
// Beginning and end of a session, and its state.
#include "console/session.h"

#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/host_address.h"
#include "console/journal_folder.h"
#include "console/journal_outcome.h"
#include "console/output.h"
#include "console/steady_time.h"
#include "console/text_encoding.h"

namespace velquinctl {

SessionSettings SettingsOf(const Request& request) {
  SessionSettings settings;
  settings.library = request.options.library;
  settings.address = request.address;
  settings.name = request.options.name;
  settings.logPath = request.options.logPath;
  settings.logPrefix = request.options.logPrefix.empty() ? kProgramName : request.options.logPrefix;
  return settings;
}

bool SessionSettings::Serve(SessionSettings asked) const {
  if (asked.iniFile.empty()) {
    asked.iniFile = iniFile;
    asked.iniSection = iniSection;
  }
  return *this == asked;
}

Session::Session(const SessionSettings& settings, const std::string& systemAddress,
                 MessageWatch& messages)
    : settings_(settings), driver_(settings.library), systemAddress_(systemAddress) {
  driver_.SetName(nullptr, SystemFromUtf8("--name", settings.name).c_str());
  if (!settings.iniFile.empty()) {
    driver_.SetIni(nullptr, SystemFromUtf8("FILE", settings.iniFile).c_str(),
                   SystemFromUtf8("SECTION", settings.iniSection).c_str());
  }
  const double begin = SteadySeconds();
  if (driver_.Start(nullptr, systemAddress_.c_str(), nullptr, 0) != 1) {
    throw Failure(ExitCode::kMountFailed,
                  "no answer from " + settings.address + DriverSays(messages));
  }
  connectSeconds_ = SteadySeconds() - begin;
}

Session::~Session() {
  try {
    End(EndProbe::kSkip);
  } catch (const std::exception&) {
    // No memory, or no folder: the session has ended all the same.
  }
}

SessionOutcome Session::End(EndProbe probe) {
  if (ended_) return SessionOutcome::Unknown();
  ended_ = true;
  // This call writes the journal before it performs what is queued. Such a half must not be taken
  // for the whole if that cannot be written later, so it goes nowhere: an empty path would be the
  // current folder; this one does not exist.
  driver_.SetLogPath(nullptr, "?\\");
  driver_.End(nullptr);
  const JournalFolder folder;
  const auto journal = WriteJournal(folder);
  std::optional<SessionOutcome> outcome;
  if (journal) outcome = OutcomeFromJournal(*journal);
  if (outcome && probe == EndProbe::kAsk && !Answers()) {
    // A question that was sent and not answered leaves a line; without one the system sends
    // nothing, and it may not have sent the commands either.
    outcome->MissReading();
    if (!ProbeWasSent(*journal, WriteJournal(folder).value_or(""))) outcome->LoseTrack();
  }
  if (!settings_.logPath.empty() && !folder.CopyTo(settings_.logPath, settings_.logPrefix))
    WriteErrorLine("cannot write the time-out journal to " + settings_.logPath);
  return outcome.value_or(SessionOutcome::WithoutEvidence());
}

std::optional<std::string> Session::WriteJournal(const JournalFolder& folder) const {
  if (folder.SystemPath().empty()) return {};
  driver_.SetLogPath(nullptr, folder.SystemPath().c_str());
  driver_.SetLogPrefix(nullptr, JournalFolder::kPrefix);
  driver_.End(nullptr);
  return folder.Read();
}

bool Session::Answers() const {
  char version[256] = {};
  char extra[8] = {};
  return driver_.Check(nullptr, systemAddress_.c_str(), nullptr, version, sizeof version, extra,
                       sizeof extra) == 1;
}

MountState Session::Read() const {
  MountState state;
  double radec[2] = {};
  state.valid = driver_.GetPos(nullptr, radec) == 1;
  state.position = {radec[0], radec[1]};
  state.ready = driver_.GetParking(nullptr) == 0;
  state.pierSide = driver_.GetEastWest(nullptr);
  return state;
}

MountState Session::WaitForPosition(const Interrupt& interrupt, double timeoutSeconds) const {
  const double deadline = SteadySeconds() + timeoutSeconds;
  for (;;) {
    interrupt.Check();
    const MountState state = Read();
    if (state.valid) return state;
    if (SteadySeconds() >= deadline) {
      throw Failure(ExitCode::kMountFailed,
                    settings_.address + " answers, but reports no position of the mount");
    }
    interrupt.SleepMs(20);
  }
}

Session& SessionHolder::Open(const SessionSettings& settings) {
  Close();
  if (!lastSettings_.Serve(settings)) lastSettings_ = settings;
  const std::string systemAddress = address_.Find(settings.address, ResolvedAddress);
  session_ = std::make_unique<Session>(lastSettings_, systemAddress, messages_);
  address_.Keep(settings.address, systemAddress);
  return *session_;
}

SessionOutcome SessionHolder::End(EndProbe probe) {
  if (!session_) return SessionOutcome::Unknown();
  SessionOutcome outcome = session_->End(probe);
  Close();
  return outcome;
}

}  // namespace velquinctl
