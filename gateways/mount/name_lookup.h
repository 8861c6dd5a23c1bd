// SPDX-License-Identifier: MIT
// NameLookup: resolves a host name on a thread that may be left behind, since the system may take
// half a minute and cannot be interrupted. One thread at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace velquin {

class NameLookup {
 public:
  using Resolver = std::function<std::optional<uint32_t>(const std::string& name)>;

  /// @param resolver see MountOptions @param wake called when the result is there, on another
  /// thread
  NameLookup(const std::string& name, const Resolver& resolver, std::function<void()> wake);
  /// Leaves a lookup that still runs to itself.
  ~NameLookup();
  NameLookup(const NameLookup&) = delete;
  NameLookup& operator=(const NameLookup&) = delete;

  bool IsReady() const;
  /// @return the address in network byte order, or nothing when the name has none.
  std::optional<uint32_t> Address() const;

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace velquin
