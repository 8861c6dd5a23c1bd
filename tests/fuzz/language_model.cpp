// SPDX-License-Identifier: MIT
#include "tests/fuzz/language_model.h"

#include <cstdlib>
#include <set>

namespace simulator {

namespace {

constexpr size_t kKeyLength = 6;
constexpr size_t kLongestLine = 255;

// Blanks around it are dropped, no other white space.
std::string Bare(const std::string& value) {
  const size_t first = value.find_first_not_of(' ');
  if (first == std::string::npos) return "";
  return value.substr(first, value.find_last_not_of(' ') + 1 - first);
}

// Whether it is digits with at most `points` points among them, perhaps behind a minus.
bool IsPlain(const std::string& text, int points) {
  size_t digits = 0;
  for (size_t i = text.rfind('-', 0) == 0 ? 1 : 0; i < text.size(); ++i) {
    if (text[i] >= '0' && text[i] <= '9') {
      ++digits;
    } else if (text[i] != '.' || points-- == 0) {
      return false;
    }
  }
  return digits > 0;
}

bool AreWithin(const std::vector<std::string>& values, double low, double high) {
  for (const std::string& value : values) {
    if (!ModelDecimal(value, low, high)) return false;
  }
  return true;
}

bool IsSite(const std::vector<std::string>& values) {
  return values.size() == 3 && ModelDecimal(values[0], -180.0, 180.0) &&
         ModelDecimal(values[1], -90.0, 90.0) && ModelWhole(values[2], -12, 14);
}

long DaysOf(long month, long year) {
  static const long kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
  return month == 2 && leap ? 29 : kDays[month - 1];
}

bool IsLocalTime(const std::vector<std::string>& values) {
  if (values.size() != 6) return false;
  const auto year = ModelWhole(values[0], 1900, 2199);
  const auto month = ModelWhole(values[1], 1, 12);
  if (!year || !month || !ModelWhole(values[2], 1, DaysOf(*month, *year))) return false;
  const auto second = ModelDecimal(values[5], 0.0, 60.0);
  return ModelWhole(values[3], 0, 23) && ModelWhole(values[4], 0, 59) && second && *second < 60.0;
}

}  // namespace

std::string ModelKeyOf(std::string_view line) {
  if (line.size() < kKeyLength || line[0] != '$') return "";
  const std::string key(line.substr(0, kKeyLength));
  constexpr char kCharacters[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789";
  return key.find_first_not_of(kCharacters, 1) == std::string::npos ? key : "";
}

bool IsKnownKey(const std::string& key) {
  static const std::set<std::string> kKeys = {"$SYVER", "$MTMDL", "$MTSTA", "$MTTGT", "$ALIGN",
                                              "$ALINI", "$MTSTP", "$MTMV2", "$MTAGS", "$MTCOM",
                                              "$MTGTS", "$MTINI", "$SYLOC", "$SYLTM", "$SYUTM"};
  return kKeys.count(key) == 1;
}

std::optional<std::vector<std::string>> ModelValues(std::string_view line) {
  if (line.size() <= kKeyLength || line.size() > kLongestLine) return std::nullopt;
  if (line[kKeyLength] != '=') return std::nullopt;
  std::vector<std::string> values(1);
  for (const char c : line.substr(kKeyLength + 1)) {
    if (static_cast<unsigned char>(c) < ' ' || c == '\x7f') return std::nullopt;
    if (c == ',') {
      values.emplace_back();
    } else {
      values.back() += c;
    }
  }
  return values;
}

std::optional<bool> IsTaken(const std::string& key, const std::vector<std::string>& values) {
  if (key == "$MTAGS") return values.size() == 2 && AreWithin(values, 0.0, 1000.0);
  if (key == "$MTCOM") return values.size() == 2 && AreWithin(values, 0.0, 30.0);
  if (key == "$MTGTS") return values.size() == 1 && ModelWhole(values[0], 0, 1000000).has_value();
  if (key == "$MTSTP" || key == "$MTINI") {
    return values.size() == 1 && ModelWhole(values[0], 1, 1).has_value();
  }
  if (key == "$ALINI") return values.size() == 1 && ModelWhole(values[0], 0, 0).has_value();
  if (key == "$SYLOC") return IsSite(values);
  if (key == "$SYLTM") return IsLocalTime(values);
  if (key == "$SYVER" || key == "$MTMDL" || key == "$MTSTA" || key == "$SYUTM") return false;
  return std::nullopt;
}

std::optional<double> ModelDecimal(const std::string& value, double low, double high) {
  const std::string bare = Bare(value);
  if (!IsPlain(bare, 1)) return std::nullopt;
  const double number = std::strtod(bare.c_str(), nullptr);
  if (number < low || number > high) return std::nullopt;
  return number;
}

std::optional<long> ModelWhole(const std::string& value, long low, long high) {
  const std::string bare = Bare(value);
  if (!IsPlain(bare, 0)) return std::nullopt;
  const long number = std::strtol(bare.c_str(), nullptr, 10);
  if (number < low || number > high) return std::nullopt;
  return number;
}

}  // namespace simulator
