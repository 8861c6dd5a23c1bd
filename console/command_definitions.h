// SPDX-License-Identifier: MIT
// The commands and options with their help texts. Only command_line.cpp includes this, because the
// parser's header is slow to compile.
#pragma once

#include <CLI/CLI.hpp>
#include <functional>
#include <map>
#include <string>

#include "console/request.h"

namespace velquinctl {

/// The words of a command line under the names of their places, as texts.
struct ArgumentTexts {
  std::string address, ra, dec, direction, file, section, topic;
  std::string tolerance, interval, duration, speed;
  std::string north, south, east, west, rateRa, rateDec;
  std::string latitude, longitude, zone, time;
  bool watch = false, yes = false;
};

/// Makes the action of one command out of its texts; throws Failure with kWrongUsage.
using ActionMaker = std::function<Action(const ArgumentTexts&)>;

/// What every definition adds to.
struct CommandDefinitions {
  CLI::App& app;
  ArgumentTexts& texts;
  std::map<std::string, ActionMaker> makers;  ///< by the command's word
};

/// The command that shows help; it has no action.
inline constexpr const char* kHelpCommand = "help";

/// Defines all commands.
void DefineCommands(CommandDefinitions& definitions);

}  // namespace velquinctl
