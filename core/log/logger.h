// SPDX-License-Identifier: MIT
// Logger: the optional text log of connection events, one time-stamped, flushed line per event.
// Owned by CVQCtrlW through a shared pointer. Any thread: the lock covers the whole line.
//
// The stream is the C library's: the C++ one behaves the same here and would make the library five
// times as large.
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
  /// Opens the file and empties one that is there; others may read and write it meanwhile. The
  /// caller looks at IsOpen afterwards.
  explicit Logger(const std::wstring& path);

  /// @return false when the file could not be opened.
  bool IsOpen() const { return stream != nullptr; }

  /// Writes "TIME:THREAD:LEVEL:MESSAGE" and flushes it.
  void Log(const char* level, const std::string& message);

  /// Joins any number of texts, characters and numbers without separators.
  template <typename... Parts>
  static std::string MakeMessage(const Parts&... parts) {
    std::string message;
    (Append(message, parts), ...);
    return message;
  }

  /// @return the local time, for example "2026-03-05T21:07:09.042".
  static std::string MakeTimeStamp();
  /// The same for a time given as milliseconds since 1970-01-01 UTC.
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
      // As a stream writes it; to_string always has six decimals.
      char text[32];
      std::snprintf(text, sizeof text, "%g", static_cast<double>(part));
      message += text;
    } else {
      message += std::to_string(part);
    }
  }

  // The standard library's, since the log stands below the framework and its lock. Clang's analysis
  // does not know it, so no attribute tells that it guards what is written to the stream; the
  // pointer itself stays as the constructor made it.
  std::mutex mutex;
  std::unique_ptr<std::FILE, StreamCloser> stream;
};

}  // namespace logging::orlin
