// SPDX-License-Identifier: MIT
// One session with one mount: from TelescopeStart to TelescopeEnd, whatever happens in between.
#pragma once

#include <memory>
#include <string>

#include "console/driver.h"
#include "console/interrupt.h"
#include "console/message_watch.h"
#include "console/request.h"
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

/// One thread.
class Session {
 public:
  /// Loads the library afresh, so that no position of an earlier mount is left, and connects.
  /// @throws Failure when the library is unusable, a text cannot be handed over, or no answer comes
  Session(const SessionSettings& settings, MessageWatch& messages);
  Session(const Session&) = delete;
  Session& operator=(const Session&) = delete;
  /// Ends the session. The driver performs what is queued first.
  ~Session();

  const Driver& Exports() const { return driver_; }
  const SessionSettings& Settings() const { return settings_; }
  MountState Read() const;

  /// Waits until the mount's position is known.
  /// @throws Failure when that takes longer than timeoutSeconds, or on Ctrl-C
  MountState WaitForPosition(const Interrupt& interrupt, double timeoutSeconds) const;

 private:
  const SessionSettings settings_;
  const Driver driver_;
};

/// Keeps a session open from one command to the next that wants the same.
class SessionHolder {
 public:
  explicit SessionHolder(MessageWatch& messages) : messages_(messages) {}

  /// @return the session with these settings; one with others is ended first. Settings without INI
  ///         overrides fit a session that has some: a script's ini line holds for those behind it.
  Session& Open(const SessionSettings& settings);
  /// Ends the session, if there is one.
  void Close() { session_.reset(); }

 private:
  MessageWatch& messages_;
  std::unique_ptr<Session> session_;
};

}  // namespace velquinctl
