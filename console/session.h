// SPDX-License-Identifier: MIT
// One session with one mount: from TelescopeStart to TelescopeEnd, whatever happens in between. At
// its end it tells what became of its commands, which the driver's exports do not.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "console/driver.h"
#include "console/interrupt.h"
#include "console/journal_folder.h"
#include "console/known_address.h"
#include "console/message_watch.h"
#include "console/request.h"
#include "console/session_outcome.h"
#include "console/sky_position.h"

namespace velquinctl {

/// All that is handed to the driver before it connects; UTF-8.
struct SessionSettings {
  std::string library;
  std::string address;
  std::string name;
  std::string logPath;
  std::string logPrefix;
  std::string iniFile;
  std::string iniSection;

  bool operator==(const SessionSettings&) const = default;
  /// @return whether a session with these settings serves who asks for others.
  bool Serve(SessionSettings asked) const;
};

/// @return the settings that a request asks for, without INI overrides.
SessionSettings SettingsOf(const Request& request);

/// What the driver last heard from the mount.
struct MountState {
  bool valid = false;  ///< false before the first answer, and when answers stopped for a while
  SkyPosition position;
  bool ready = false;  ///< false while parked or otherwise not ready to observe
  int pierSide = -1;   ///< 0 or 1; -1 unknown
};

/// Whether the end of a session asks the controller once more if it is there. Without, datagrams
/// that the system refused to send (a cable that was pulled out) go unnoticed, so that an
/// acknowledgement proves nothing by itself.
enum class EndProbe { kAsk, kSkip };

/// Why it is not known what became of a session's commands; see SessionOutcome::Evident.
inline constexpr const char* kNoEvidence =
    "the driver's journal cannot be written to the folder for temporary files (%TMP%), so what the "
    "controller acknowledged is not known";

/// One thread.
class Session {
 public:
  /// Loads the library afresh, so that no reading is older than the session, and connects.
  /// @param systemAddress the dotted IPv4 address of settings.address
  /// @throws Failure when the library is unusable, a text cannot be handed over, or no answer comes
  Session(const SessionSettings& settings, const std::string& systemAddress,
          MessageWatch& messages);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  /// Ends the session, unless that was done. The driver performs what is queued first.
  ~Session();

  const Driver& Exports() const { return driver_; }
  const SessionSettings& Settings() const { return settings_; }
  MountState Read() const;
  /// @return how long the connecting took, seven exchanges.
  double ConnectSeconds() const { return connectSeconds_; }

  /// Waits until the mount's position is known.
  /// @throws Failure when that takes longer than timeoutSeconds, or on Ctrl-C
  MountState WaitForPosition(const Interrupt& interrupt, double timeoutSeconds) const;

  /// Ends the session. What is queued is performed first, so this takes as long as that does.
  /// @return what became of all its commands and readings. Nothing can be asked of it afterwards.
  SessionOutcome End(EndProbe probe);

 private:
  /// @return whether the controller answers now, after the session.
  bool Answers() const;
  /// Has the driver write its journal, after the session. @return it; nothing when it cannot be
  /// had.
  std::optional<std::string> WriteJournal(const JournalFolder& folder) const;

  const SessionSettings settings_;
  const Driver driver_;
  const std::string systemAddress_;
  double connectSeconds_ = 0.0;
  bool ended_ = false;
};

/// Keeps the session of the command that runs. One thread.
class SessionHolder {
 public:
  explicit SessionHolder(MessageWatch& messages) : messages_(messages) {}

  /// @return a new session with these settings; the one before is ended first. Settings without INI
  ///         overrides get those of the session before when all else is the same: a script's ini
  ///         line holds for those behind it.
  Session& Open(const SessionSettings& settings);
  /// @return the session, or null when there is none.
  Session* Current() const { return session_.get(); }
  /// Ends the session. @return what became of its commands; Unknown when there was none.
  SessionOutcome End(EndProbe probe);
  /// Ends the session, if there is one.
  void Close() { session_.reset(); }

 private:
  MessageWatch& messages_;
  SessionSettings lastSettings_;
  KnownAddress address_;
  std::unique_ptr<Session> session_;
};

}  // namespace velquinctl
