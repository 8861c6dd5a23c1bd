// SPDX-License-Identifier: MIT
#include "gateways/mount/name_lookup.h"

#include <mutex>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/sockets.h"

namespace velquin {

namespace {

// Converts 127.0.0.1 as 0x7F000001 to network byte order, on machines of either byte order.
uint32_t ToNetworkOrder(uint32_t address) {
  const unsigned char bytes[4] = {
      static_cast<unsigned char>(address >> 24), static_cast<unsigned char>(address >> 16),
      static_cast<unsigned char>(address >> 8), static_cast<unsigned char>(address)};
  uint32_t result = 0;
  static_assert(sizeof bytes == sizeof result);
  __builtin_memcpy(&result, bytes, sizeof result);
  return result;
}

std::optional<uint32_t> Resolve(const std::string& name, const NameLookup::Resolver& resolver) {
  try {
    if (resolver) {
      const std::optional<uint32_t> address = resolver(name);
      return address ? std::optional(ToNetworkOrder(*address)) : std::nullopt;
    }
    uint32_t address = 0;
    if (platform::LookUpHost(name.c_str(), address)) return address;
  } catch (...) {
    // A resolver that throws has found nothing.
  }
  return std::nullopt;
}

}  // namespace

struct NameLookup::Shared {
  std::mutex lock;
  // Guarded by lock.
  bool ready = false;
  std::optional<uint32_t> address;
  std::function<void()> wake;  // empty when the result is not wanted any more
};

NameLookup::NameLookup(const std::string& name, const Resolver& resolver,
                       std::function<void()> wake)
    : shared_(std::make_shared<Shared>()) {
  shared_->wake = std::move(wake);
  try {
    std::thread([shared = shared_, name, resolver] {
      const std::optional<uint32_t> address = Resolve(name, resolver);
      const std::lock_guard guard(shared->lock);
      shared->address = address;
      shared->ready = true;
      if (shared->wake) shared->wake();
    }).detach();
  } catch (const std::system_error&) {
    shared_->ready = true;  // no thread: not found
  }
}

NameLookup::~NameLookup() {
  const std::lock_guard guard(shared_->lock);
  shared_->wake = nullptr;
}

bool NameLookup::IsReady() const {
  const std::lock_guard guard(shared_->lock);
  return shared_->ready;
}

std::optional<uint32_t> NameLookup::Address() const {
  const std::lock_guard guard(shared_->lock);
  return shared_->address;
}

}  // namespace velquin
