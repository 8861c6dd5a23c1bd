// SPDX-License-Identifier: MIT
// What became of the commands of one session. The commands of velquinctl judge by this value alone;
// how it is found out is the business of whoever makes it (journal_outcome.h for velquin.dll).
// A plain value; any thread.
#pragma once

#include <set>

namespace velquinctl {

/// What velquinctl asks a mount to do.
enum class MountCommand {
  kGoto,
  kHome,
  kPark,
  kUnpark,
  kSync,
  kStop,
  kHandMove,
  kPulse,
  kGuideSpeed,
  kSite,
  kAlignReset,
  kMeridian,
};

class SessionOutcome {
 public:
  /// @return the outcome of a session of which nothing can be told.
  static SessionOutcome Unknown() {
    SessionOutcome outcome;
    outcome.LoseTrack();
    return outcome;
  }

  /// @return the outcome of a session whose evidence, the journal, cannot be had.
  static SessionOutcome WithoutEvidence() {
    SessionOutcome outcome = Unknown();
    outcome.evident_ = false;
    return outcome;
  }

  /// Notes that a command was sent and no usable answer came.
  void Miss(MountCommand command) { missed_.insert(command); }
  /// Notes that a status query failed or was slow: a later reading may have been an old one.
  void MissReading() { readingsComplete_ = false; }
  /// Notes that commands may not even have been sent.
  void LoseTrack() {
    known_ = false;
    readingsComplete_ = false;
  }

  /// @param command one that the session was asked for
  /// @return whether the controller certainly answered it, all of its parts. If not, the controller
  ///         may have obeyed it all the same.
  bool Acknowledged(MountCommand command) const { return known_ && !missed_.contains(command); }
  /// @return whether every status query was answered in time, so that no reading was an old one.
  bool ReadingsComplete() const { return readingsComplete_; }
  /// @return false when the journal is missing or unreadable, so that nothing is known.
  bool Evident() const { return evident_; }

 private:
  bool evident_ = true;
  bool known_ = true;
  bool readingsComplete_ = true;
  std::set<MountCommand> missed_;
};

}  // namespace velquinctl
