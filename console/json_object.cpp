// SPDX-License-Identifier: MIT
// JSON by hand: one flat object needs no library, and every file that included one would pay for
// it.
#include "console/json_object.h"

#include <cmath>
#include <cstdio>

namespace velquinctl {
namespace {

std::string Quoted(std::string_view text) {
  std::string quoted = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') {
      quoted += '\\';
      quoted += c;
    } else if (static_cast<unsigned char>(c) < 0x20) {
      char escape[8];
      std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(c));
      quoted += escape;
    } else {
      quoted += c;
    }
  }
  return quoted + '"';
}

}  // namespace

JsonObject& JsonObject::Add(std::string_view key, double value) {
  if (!std::isfinite(value)) return AddNull(key);
  char text[400];
  std::snprintf(text, sizeof text, "%.7f", value);
  std::string number = text;
  number.erase(number.find_last_not_of('0') + 1);
  if (number.back() == '.') number += '0';
  return AddRaw(key, number == "-0.0" ? "0.0" : number);
}

JsonObject& JsonObject::Add(std::string_view key, int value) {
  return AddRaw(key, std::to_string(value));
}

JsonObject& JsonObject::Add(std::string_view key, bool value) {
  return AddRaw(key, value ? "true" : "false");
}

JsonObject& JsonObject::Add(std::string_view key, std::string_view value) {
  return AddRaw(key, Quoted(value));
}

JsonObject& JsonObject::AddNull(std::string_view key) {
  return AddRaw(key, "null");
}

JsonObject& JsonObject::Append(const JsonObject& other) {
  if (!members_.empty() && !other.members_.empty()) members_ += ", ";
  members_ += other.members_;
  return *this;
}

JsonObject& JsonObject::AddRaw(std::string_view key, std::string_view raw) {
  if (!members_.empty()) members_ += ", ";
  members_ += Quoted(key) + ": " + std::string(raw);
  return *this;
}

}  // namespace velquinctl
