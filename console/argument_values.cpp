// SPDX-License-Identifier: MIT
// The judgement of single arguments.
#include "console/argument_values.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string_view>
#include <utility>

#include "console/angle_text.h"
#include "console/failure.h"
#include "include/telescope_api.h"

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

double AnyNumber(const std::string& what, const std::string& text) {
  double value = 0.0;
  if (!ParseNumber(text, value)) Refuse(what + ": \"" + text + "\" is not a number");
  return value;
}

bool ReadsAsAngle(const std::string& text) {
  double degrees = 0.0;
  std::string error;
  return ParseRightAscension(text, degrees, error) || ParseDeclination(text, degrees, error);
}

bool HasBlankOrControl(const std::string& text) {
  return std::any_of(text.begin(), text.end(),
                     [](char c) { return static_cast<unsigned char>(c) <= ' ' || c == 0x7F; });
}

constexpr const char* kAddressForms = " (write a host name or 192.168.1.10)";

constexpr std::pair<std::string_view, TelescopeDirection> kDirections[] = {
    {"north", TELESCOPE_NORTH},
    {"south", TELESCOPE_SOUTH},
    {"east", TELESCOPE_EAST},
    {"west", TELESCOPE_WEST},
};

/// @return the direction's number, or 0 for another word.
int DirectionOf(std::string_view word) {
  for (const auto& [name, direction] : kDirections) {
    if (name == word) return direction;
  }
  return 0;
}

}  // namespace

double NumberArgument(const std::string& what, const std::string& text, double low, double high) {
  const double value = AnyNumber(what, text);
  if (value < low || value > high)
    Refuse(what + ": " + text + " is out of range (" + Short(low) + " to " + Short(high) + ")");
  return value;
}

int WholeArgument(const std::string& what, const std::string& text, int low, int high) {
  const double value = NumberArgument(what, text, low, high);
  if (value != std::floor(value)) Refuse(what + ": \"" + text + "\" is not a whole number");
  return static_cast<int>(value);
}

std::optional<double> SecondsArgument(const std::string& what, const std::string& text) {
  if (text.empty()) return {};
  const double seconds = AnyNumber(what, text);
  if (seconds <= 0.0 || seconds > kWeekSeconds) {
    Refuse(what + ": " + text + " is out of range (greater than 0, at most " + Short(kWeekSeconds) +
           " seconds)");
  }
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

void RefuseForgottenAddress(const std::string& text) {
  if (!ReadsAsAngle(text) && DirectionOf(text) == 0) return;
  Refuse("the first argument must be the mount's address, and \"" + text + "\" is not one" +
         kAddressForms);
}

std::string AddressArgument(const std::string& text) {
  if (text.empty() || HasBlankOrControl(text))
    Refuse("\"" + text + "\" is not an address" + kAddressForms);
  // Digits and points alone may be an address, and a word without any may be a host's name.
  const bool onlyDigitsAndPoints = text.find_first_not_of("0123456789.") == std::string::npos;
  if (!onlyDigitsAndPoints && DirectionOf(text) == 0) RefuseForgottenAddress(text);
  if (text.find(':') != std::string::npos) {
    Refuse("\"" + text +
           "\" is not a valid mount address (no port, no IPv6; write a host name or " +
           "192.168.1.10)");
  }
  return text;
}

std::string FileNamePartArgument(const std::string& what, const std::string& text) {
  constexpr std::string_view kForbidden = "/\\:*?\"<>|";
  const bool forbidden = std::any_of(text.begin(), text.end(), [&](char c) {
    return static_cast<unsigned char>(c) < ' ' || kForbidden.find(c) != std::string_view::npos;
  });
  if (forbidden) {
    Refuse(what + ": \"" + text + "\" cannot be part of a file name (not allowed: " +
           "/ \\ : * ? \" < > | and control characters)");
  }
  return text;
}

ProgressMode ProgressArgument(const std::string& text) {
  if (text == "auto") return ProgressMode::kAuto;
  if (text == "live") return ProgressMode::kLive;
  if (text == "plain") return ProgressMode::kPlain;
  if (text == "none") return ProgressMode::kNone;
  Refuse("--progress: \"" + text + "\" is not a valid value (auto, live, plain or none)");
}

int DirectionArgument(const std::string& text) {
  const int direction = DirectionOf(text);
  if (direction == 0) Refuse("\"" + text + "\" is not a direction (north, south, east or west)");
  return direction;
}

}  // namespace velquinctl
