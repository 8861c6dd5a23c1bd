// SPDX-License-Identifier: MIT
// All 27 functions as a list, each with harmless arguments and with what it must answer.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "tests/support/driver_library.h"

/// Whether the library has had an answer to a poll since it was loaded.
enum class Polled { kNever, kPerhaps, kOnce };

struct HostCall {
  std::string name;  ///< without "Telescope"
  std::function<int32_t(const DriverLibrary&)> call;
  int32_t answer;              ///< when a poll has been answered
  int32_t unpolledAnswer;      ///< before that
  bool startsSession = false;  ///< so it answers 0 while one runs

  /// @return what it may answer; more than one only when nobody knows whether there was a poll.
  std::vector<int32_t> Answers(bool inSession, Polled polled) const;
};

/// @param address of a ScriptedController that looks like a mount, whose status the answers are
/// taken
///        from; must outlive the list
/// @return the calls in alphabetical order. A call of Dialog opens the hand controller.
std::vector<HostCall> AllHostCalls(const std::string& address);
