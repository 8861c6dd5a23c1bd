// SPDX-License-Identifier: MIT
// NameLookup: resolves a host name on a thread that can be abandoned, since the system may take
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

  /// @param resolver see MountOptions @param wake called on another thread when the result is
  ///         available
  NameLookup(const std::string& name, const Resolver& resolver, std::function<void()> wake);
  /// Abandons a lookup that is still running.
  ~NameLookup();
  NameLookup(const NameLookup&) = delete;
  NameLookup& operator=(const NameLookup&) = delete;

  bool IsReady() const;
  /// @return the address in network byte order, or nothing if the name has none.
  std::optional<uint32_t> Address() const;

 private:
  struct Shared;
  std::shared_ptr<Shared> shared_;
};

}  // namespace velquin
