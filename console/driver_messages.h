// SPDX-License-Identifier: MIT
// Puts what the driver said in its message boxes into velquinctl's own lines.
#pragma once

#include <string>

#include "console/message_watch.h"

namespace velquinctl {

/// Takes the messages that came so far. @return " (the driver says: ...)", or nothing when it said
/// nothing.
inline std::string DriverSays(MessageWatch& messages) {
  std::string said;
  for (const std::string& text : messages.Take()) said += (said.empty() ? "" : " / ") + text;
  return said.empty() ? said : " (the driver says: " + said + ")";
}

}  // namespace velquinctl
