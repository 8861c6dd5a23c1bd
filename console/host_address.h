// SPDX-License-Identifier: MIT
// The controller's address as the driver's link finds it: a dotted IPv4 address, else the first
// IPv4 address that the system finds for a host name. The driver tells neither failure from a
// silent mount, so the console looks first. Any thread.
#pragma once

#include <string>

namespace velquinctl {

/// Judges an address without asking the network.
/// @param address UTF-8
/// @throws Failure with kWrongUsage for a text of digits and points that is not an IPv4 address,
/// and
///         for characters that the system's code page lacks
void CheckAddress(const std::string& address);

/// Looks a host name up, which may take as long as the system takes.
/// @param address UTF-8, that CheckAddress accepts
/// @return the dotted IPv4 address, for the driver
/// @throws Failure with kMountFailed for a name that cannot be resolved
std::string ResolvedAddress(const std::string& address);

}  // namespace velquinctl
