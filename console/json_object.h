// SPDX-License-Identifier: MIT
// Writes one flat JSON object on one line, keys in the order they were added. One thread.
#pragma once

#include <string>
#include <string_view>

namespace velquinctl {

class JsonObject {
 public:
  /// A number with up to seven decimals (0.0004 seconds of arc); what is not finite becomes null.
  JsonObject& Add(std::string_view key, double value);
  JsonObject& Add(std::string_view key, int value);
  JsonObject& Add(std::string_view key, bool value);
  /// @param value UTF-8
  JsonObject& Add(std::string_view key, std::string_view value);
  JsonObject& Add(std::string_view key, const char* value) {
    return Add(key, std::string_view(value));
  }
  JsonObject& AddNull(std::string_view key);

  /// Adds everything of another object behind what is there.
  JsonObject& Append(const JsonObject& other);

  /// @return the object, without a line end.
  std::string Text() const { return '{' + members_ + '}'; }

 private:
  JsonObject& AddRaw(std::string_view key, std::string_view raw);

  std::string members_;
};

}  // namespace velquinctl
