// SPDX-License-Identifier: MIT
// The calls are those of the driver's link, so that both read an address alike.
#include "console/host_address.h"

#include <winsock2.h>

#include "console/failure.h"
#include "console/text_encoding.h"

namespace velquinctl {
namespace {

/// Windows' sockets for as long as the object lives.
class Sockets {
 public:
  Sockets() {
    WSADATA data;
    started_ = WSAStartup(MAKEWORD(2, 0), &data) == 0;
  }
  Sockets(const Sockets&) = delete;
  Sockets& operator=(const Sockets&) = delete;
  ~Sockets() {
    if (started_) WSACleanup();
  }

 private:
  bool started_ = false;
};

}  // namespace

void CheckAddress(const std::string& address) {
  const std::string host = SystemFromUtf8("ADDRESS", address);
  const bool onlyDigitsAndPoints = host.find_first_not_of("0123456789.") == std::string::npos;
  if (host.empty() || !onlyDigitsAndPoints || inet_addr(host.c_str()) != INADDR_NONE) return;
  throw Failure(
      ExitCode::kWrongUsage,
      "\"" + address + "\" is not a valid IPv4 address (write four numbers from 0 to 255)");
}

std::string ResolvedAddress(const std::string& address) {
  const Sockets sockets;
  const std::string host = SystemFromUtf8("ADDRESS", address);
  in_addr found;
  found.s_addr = inet_addr(host.c_str());
  if (found.s_addr == INADDR_NONE) {
    const hostent* const entry = gethostbyname(host.c_str());
    if (entry == nullptr || entry->h_addr_list[0] == nullptr) {
      throw Failure(ExitCode::kMountFailed, "the host name \"" + address + "\" cannot be resolved");
    }
    found = *reinterpret_cast<const in_addr*>(entry->h_addr_list[0]);
  }
  return inet_ntoa(found);
}

}  // namespace velquinctl
