// SPDX-License-Identifier: MIT
// The judgement of single arguments.
#include "console/argument_values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "console/angle_text.h"
#include "console/failure.h"

namespace velquinctl {
namespace {

constexpr double kWeekSeconds = 7 * 24 * 3600.0;

[[noreturn]] void Refuse(const std::string& text) {
  throw Failure(ExitCode::kWrongUsage, text);
}

std::string Short(double value) {
  char text[40];
  std::snprintf(text, sizeof text, "%g", value);
  return text;
}

}  // namespace

double NumberArgument(const std::string& what, const std::string& text, double low, double high) {
  double value = 0.0;
  if (!ParseNumber(text, value)) Refuse(what + ": \"" + text + "\" is no number");
  if (value < low || value > high)
    Refuse(what + ": " + text + " is out of range (" + Short(low) + " to " + Short(high) + ")");
  return value;
}

int WholeArgument(const std::string& what, const std::string& text, int low, int high) {
  const double value = NumberArgument(what, text, low, high);
  if (value != std::floor(value)) Refuse(what + ": \"" + text + "\" is no whole number");
  return static_cast<int>(value);
}

std::optional<double> SecondsArgument(const std::string& what, const std::string& text) {
  if (text.empty()) return {};
  const double seconds = NumberArgument(what, text, 0.0, kWeekSeconds);
  if (seconds <= 0.0) Refuse(what + ": the time must be above 0 seconds");
  return seconds;
}

SkyPosition PositionArgument(const std::string& ra, const std::string& dec) {
  SkyPosition position;
  std::string error;
  if (!ParseRightAscension(ra, position.raDegrees, error) ||
      !ParseDeclination(dec, position.decDegrees, error))
    Refuse(error);
  return position;
}

std::string AddressArgument(const std::string& text) {
  const bool wrong = text.empty() || std::any_of(text.begin(), text.end(), [](char c) {
                       return static_cast<unsigned char>(c) <= ' ' || c == 0x7F;
                     });
  if (wrong) Refuse("\"" + text + "\" is no address (write a host name or 192.168.1.10)");
  if (text.find(':') != std::string::npos) {
    Refuse("\"" + text + "\" is no address that a mount can have (no port, no IPv6; write a host " +
           "name or 192.168.1.10)");
  }
  return text;
}

ProgressMode ProgressArgument(const std::string& text) {
  if (text == "auto") return ProgressMode::kAuto;
  if (text == "live") return ProgressMode::kLive;
  if (text == "plain") return ProgressMode::kPlain;
  if (text == "none") return ProgressMode::kNone;
  Refuse("--progress: \"" + text + "\" is none of auto, live, plain, none");
}

int DirectionArgument(const std::string& text) {
  if (text == "north") return 1;
  if (text == "south") return 2;
  if (text == "east") return 3;
  if (text == "west") return 4;
  Refuse("\"" + text + "\" is no direction (north, south, east or west)");
}

}  // namespace velquinctl
