// SPDX-License-Identifier: MIT
// Beginning and end of a session, and its state.
#include "console/session.h"

#include "console/driver_messages.h"
#include "console/failure.h"
#include "console/files.h"
#include "console/host_address.h"
#include "console/steady_time.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

/// @return the folder with the separator at its end that the driver expects; a journal that nobody
///         asked for goes where it bothers nobody.
std::string JournalFolder(const std::string& asked) {
  if (asked.empty()) return TemporaryFolder();
  return asked.ends_with('\\') || asked.ends_with('/') ? asked : asked + '\\';
}

}  // namespace

SessionSettings SettingsOf(const Request& request) {
  SessionSettings settings;
  settings.library = request.options.library;
  settings.address = request.address;
  settings.name = request.options.name;
  settings.logPath = JournalFolder(request.options.logPath);
  settings.logPrefix = request.options.logPrefix.empty() ? "velquinctl" : request.options.logPrefix;
  return settings;
}

bool SessionSettings::Serve(SessionSettings asked) const {
  if (asked.iniFile.empty()) {
    asked.iniFile = iniFile;
    asked.iniSection = iniSection;
  }
  return *this == asked;
}

Session::Session(const SessionSettings& settings, MessageWatch& messages)
    : settings_(settings), driver_(settings.library) {
  const std::string address = ResolvedAddress(settings.address);
  driver_.SetName(nullptr, SystemFromUtf8("--name", settings.name).c_str());
  driver_.SetLogPath(nullptr, SystemFromUtf8("--log-path", settings.logPath).c_str());
  driver_.SetLogPrefix(nullptr, SystemFromUtf8("--log-prefix", settings.logPrefix).c_str());
  if (!settings.iniFile.empty()) {
    driver_.SetIni(nullptr, SystemFromUtf8("FILE", settings.iniFile).c_str(),
                   SystemFromUtf8("SECTION", settings.iniSection).c_str());
  }
  if (driver_.Start(nullptr, address.c_str(), nullptr, 0) != 1) {
    throw Failure(ExitCode::kMountFailed,
                  "no answer from " + settings.address + DriverSays(messages));
  }
}

Session::~Session() {
  driver_.End(nullptr);
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
                    settings_.address + " answers, but tells no position of the mount");
    }
    interrupt.SleepMs(20);
  }
}

Session& SessionHolder::Open(const SessionSettings& settings) {
  if (session_ && session_->Settings().Serve(settings)) return *session_;
  Close();
  session_ = std::make_unique<Session>(settings, messages_);
  return *session_;
}

}  // namespace velquinctl
