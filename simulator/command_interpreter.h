// SPDX-License-Identifier: MIT
// The simulated controller's command language: one line in, one line out, carried out on a
// MountModel. Owned with the model by the Simulator. Not locked.
#pragma once

#include <string>
#include <string_view>

#include "simulator/command_line.h"
#include "simulator/mount_model.h"

namespace simulator {

/// What came of one command line.
struct CommandOutcome {
  std::string reply;  ///< the answering line, without line end; never empty
  std::string note;   ///< what a person may want to know beyond the reply; often empty
};

class CommandInterpreter {
 public:
  /// @param model outlives the interpreter
  explicit CommandInterpreter(MountModel& model) : model_(model) {}

  /// Carries one line out and answers it. A line that cannot be understood or carried out changes
  /// nothing and is answered "KEY=ERROR", or "$ERROR=COMMAND" when it has no known key.
  /// @param line without line end; any bytes, any length
  CommandOutcome Answer(std::string_view line);

 private:
  /// One entry of the command table; a missing operation is refused.
  struct Operation {
    const char* key;
    std::string (CommandInterpreter::*query)() const;
    std::string (CommandInterpreter::*set)(const std::vector<std::string>& values);
  };
  using Values = std::vector<std::string>;
  static const Operation kOperations[];

  // Each gives the reply's value text, empty for a refusal.
  std::string QueryVersion() const;
  std::string QueryModel() const;
  std::string QueryStatus() const;
  std::string QuerySite() const;
  std::string QueryUtc() const;
  std::string QueryGuideRates() const;
  std::string QueryMeridian() const;
  std::string QueryGts() const;
  std::string SetTarget(const Values& values);
  std::string SetAlignment(const Values& values);
  std::string ResetAlignment(const Values& values);
  std::string Stop(const Values& values);
  std::string Move(const Values& values);
  std::string SetGuideRates(const Values& values);
  std::string SetMeridian(const Values& values);
  std::string SetGts(const Values& values);
  std::string Initialise(const Values& values);
  std::string SetSite(const Values& values);
  std::string SetLocalTime(const Values& values);
  std::string GotoReply(SlewAnswer answer);
  void NoteEndedMove();

  MountModel& model_;
  double guideRates_[2] = {1.0,
                           1.0};  // right ascension, declination; multiples of the sidereal rate
  int gts_ = 0;                   // kept, not used
  std::string note_;              // of the command being carried out
};

}  // namespace simulator
