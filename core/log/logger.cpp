// SPDX-License-Identifier: MIT
#include "core/log/logger.h"

#include <chrono>
#include <ctime>

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/threads.h"

namespace logging::orlin {

Logger::Logger(const std::wstring& path) : stream(platform::OpenSharedTextFile(path)) {}

void Logger::Log(const char* level, const std::string& message) {
  const std::lock_guard<std::mutex> wholeLine(mutex);
  std::fprintf(stream.get(), "%s:%llu:%s:%s\n", MakeTimeStamp().c_str(),
               static_cast<unsigned long long>(platform::CurrentThreadNumber()), level,
               message.c_str());
  std::fflush(stream.get());
}

std::string Logger::MakeTimeStamp() {
  using std::chrono::milliseconds;
  const auto sinceEpoch = std::chrono::system_clock::now().time_since_epoch();
  return MakeTimeStamp(std::chrono::duration_cast<milliseconds>(sinceEpoch).count());
}

std::string Logger::MakeTimeStamp(int64_t millisecondsSince1970) {
  std::tm local = {};
  if (!platform::LocalTime(millisecondsSince1970 / 1000, local)) return "";
  char seconds[32];
  // Not %F and %T: the Windows runtime does not support them.
  const size_t length = std::strftime(seconds, sizeof seconds, "%Y-%m-%dT%H:%M:%S", &local);
  char milliseconds[8];
  std::snprintf(milliseconds, sizeof milliseconds, ".%03d",
                static_cast<int>(millisecondsSince1970 % 1000));
  return std::string(seconds, length) + milliseconds;
}

}  // namespace logging::orlin
