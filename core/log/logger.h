// SPDX-License-Identifier: MIT
// Logger: the optional text log of connection events, one time-stamped, flushed line per event.
// Owned by CVQCtrlW through a shared pointer. Any thread: the lock covers the whole line.
//
// It uses the C library's stream: a C++ stream behaves the same here and would make the library
// five times as large.
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string>
#include <type_traits>

namespace logging::orlin {

class Logger {
 public:
  /// Opens the file and empties an existing one. Other processes may read and write it meanwhile.
  /// Check IsOpen afterwards.
  explicit Logger(const std::wstring& path);

  /// @return false if the file could not be opened.
  bool IsOpen() const { return stream != nullptr; }

  /// Writes "TIME:THREAD:LEVEL:MESSAGE" and flushes it.
  void Log(const char* level, const std::string& message);

  /// Joins texts, characters and numbers, in any number, without separators.
  template <typename... Parts>
  static std::string MakeMessage(const Parts&... parts) {
    std::string message;
    (Append(message, parts), ...);
    return message;
  }

  /// @return the local time, for example "2026-03-05T21:07:09.042".
  static std::string MakeTimeStamp();
  /// The same for a time in milliseconds since 1970-01-01 UTC.
  static std::string MakeTimeStamp(int64_t millisecondsSince1970);

 private:
  struct StreamCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };

  static void Append(std::string& message, const std::string& part) { message += part; }
  static void Append(std::string& message, const char* part) { message += part; }
  static void Append(std::string& message, char part) { message += part; }
  template <typename Number>
  static void Append(std::string& message, Number part) {
    if constexpr (std::is_floating_point_v<Number>) {
      // The format of a C++ stream; to_string always writes six decimals.
      char text[32];
      std::snprintf(text, sizeof text, "%g", static_cast<double>(part));
      message += text;
    } else {
      message += std::to_string(part);
    }
  }

  // The standard library's lock, since the log is below the framework and its lock in the layering.
  // Clang's analysis does not know it, so no attribute says that it guards writing to the stream.
  // The pointer itself does not change after the constructor.
  std::mutex mutex;
  std::unique_ptr<std::FILE, StreamCloser> stream;
};

}  // namespace logging::orlin
