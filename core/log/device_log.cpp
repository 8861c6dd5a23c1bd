// SPDX-License-Identifier: MIT
#include "core/log/device_log.h"

#include <algorithm>
#include <string_view>

#include "core/log/log_location.h"
#include "platform/user_settings.h"

namespace logging::orlin {
namespace {

char LowerCase(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool SameWord(std::string_view text, std::string_view word) {
  return std::equal(text.begin(), text.end(), word.begin(), word.end(),
                    [](char a, char b) { return LowerCase(a) == b; });
}

}  // namespace

bool IsDeviceLogOn() {
  char text[16] = {};
  // One byte less than the buffer, so that the text always ends with a NUL.
  if (!platform::ReadUserSetting("SOFTWARE\\Halvorn\\Pelloran\\3.0\\Setting", "DeviceLogWrite",
                                 text, sizeof text - 1)) {
    return false;
  }
  const std::string_view words[] = {"yes", "true", "on", "1"};
  return std::any_of(std::begin(words), std::end(words),
                     [&](std::string_view word) { return SameWord(text, word); });
}

std::shared_ptr<Logger> OpenDeviceLog() {
  if (!IsDeviceLogOn()) return nullptr;
  auto logger =
      std::make_unique<Logger>(GetLogFilePath(L"Halvorn/Ambrix/3.0", L"velquin.log", true));
  if (!logger->IsOpen()) return nullptr;
  return std::shared_ptr<Logger>(std::move(logger));
}

}  // namespace logging::orlin
