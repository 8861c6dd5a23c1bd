// SPDX-License-Identifier: MIT
// What goes wrong with one exchange on its way between host and controller. A plain value that
// leaves nothing to chance: the same fault on the same reply gives the same datagrams. Any thread.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simulator {

/// Places in a reply are thousandths of its length, since the reply is not known when the fault is
/// chosen.
struct Fault {
  bool silence = false;       ///< the controller is gone: it neither hears nor answers
  bool losesCommand = false;  ///< the command never arrives
  bool losesReply = false;    ///< the command is obeyed, its reply never arrives
  int delayMs = 0;            ///< from the command's arrival to its reply
  bool empties = false;       ///< the reply is a datagram of no bytes
  std::optional<int> garblesAt = std::nullopt;  ///< 0 to 999: this byte of the reply is another one
  int garbleBits = 1;                           ///< 1 to 255: the bits of it that are flipped
  std::optional<int> truncateAt =
      std::nullopt;  ///< 0 to 999: the reply ends there, at least a byte too early
  std::optional<int> splitAt = std::nullopt;  ///< 0 to 999: the reply comes in two datagrams
  bool duplicates = false;                    ///< the reply comes twice
  bool foreign = false;   ///< a stranger's datagram comes before it, from another port
  bool reorders = false;  ///< the reply comes behind the reply to the next command

  bool operator==(const Fault&) const = default;
};

/// What the stranger says.
inline constexpr const char* kForeignLine = "$OTHER=1\r\n";

/// Chooses what goes wrong with an exchange. @param exchange counts from 1
using FaultChooser = std::function<Fault(int exchange, std::string_view command)>;

/// @return "delay=35,truncate=372" and the like, "-" for none; FaultFromText reads it.
std::string FaultText(const Fault& fault);
/// @return nothing for a text that FaultText does not write.
std::optional<Fault> FaultFromText(std::string_view text);

/// @return what arrives of a reply's datagrams; delay, order and the stranger are not its business.
std::vector<std::string> AfterFault(const Fault& fault, const std::vector<std::string>& datagrams);

}  // namespace simulator
