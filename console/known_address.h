// SPDX-License-Identifier: MIT
// The address that a host name was last found at, so that stopping a mount never waits for a name
// server. One thread.
#pragma once

#include <functional>
#include <string>

namespace velquinctl {

class KnownAddress {
 public:
  /// @param address what the user calls the controller
  /// @param lookUp finds the dotted IPv4 address of it; what it throws goes on to the caller
  /// @return the kept address of that name; without one, what lookUp finds
  std::string Find(const std::string& address,
                   const std::function<std::string(const std::string&)>& lookUp) const {
    return address == address_ ? dotted_ : lookUp(address);
  }

  /// Notes that a controller answered there.
  void Keep(const std::string& address, const std::string& dotted) {
    address_ = address;
    dotted_ = dotted;
  }

 private:
  std::string address_;  // empty before the first answer
  std::string dotted_;
};

}  // namespace velquinctl
