// SPDX-License-Identifier: MIT
#include "simulator/fault.h"

#include "simulator/command_line.h"

namespace simulator {

namespace {

constexpr int kThousandths = 1000;
constexpr int kLongestDelayMs = 3'600'000;

struct Flag {
  const char* word;
  bool Fault::* field;
};

constexpr Flag kFlags[] = {
    {"silence", &Fault::silence},       {"lose-command", &Fault::losesCommand},
    {"lose-reply", &Fault::losesReply}, {"empty", &Fault::empties},
    {"duplicate", &Fault::duplicates},  {"foreign", &Fault::foreign},
    {"reorder", &Fault::reorders},
};

struct Place {
  const char* word;
  std::optional<int> Fault::* field;
};

constexpr Place kPlaces[] = {
    {"garble", &Fault::garblesAt},
    {"truncate", &Fault::truncateAt},
    {"split", &Fault::splitAt},
};

bool SetFlag(Fault& fault, std::string_view word) {
  for (const Flag& flag : kFlags) {
    if (word != flag.word) continue;
    fault.*flag.field = true;
    return true;
  }
  return false;
}

/// "garble=512:32" has a second number; the others have none.
bool SetNumber(Fault& fault, std::string_view word, std::string_view value) {
  if (word == "delay") {
    const auto delay = WholeValue(value, 0, kLongestDelayMs);
    fault.delayMs = delay.value_or(0);
    return delay.has_value();
  }
  if (word == "garble") {
    const size_t colon = value.find(':');
    if (colon == value.npos) return false;
    const auto bits = WholeValue(value.substr(colon + 1), 1, 255);
    if (!bits) return false;
    fault.garbleBits = *bits;
    value = value.substr(0, colon);
  }
  for (const Place& place : kPlaces) {
    if (word != place.word) continue;
    fault.*place.field = WholeValue(value, 0, kThousandths - 1);
    return (fault.*place.field).has_value();
  }
  return false;
}

/// @return a length from 1 to size - 1. @param size 2 at least
size_t InnerPlace(size_t size, int thousandths) {
  return 1 + (size - 1) * static_cast<size_t>(thousandths) / kThousandths;
}

std::string Garbled(std::string bytes, const Fault& fault) {
  if (bytes.empty()) return bytes;
  char& hit = bytes[bytes.size() * static_cast<size_t>(*fault.garblesAt) / kThousandths];
  hit = static_cast<char>(static_cast<unsigned char>(hit) ^ fault.garbleBits);
  return bytes;
}

}  // namespace

std::string FaultText(const Fault& fault) {
  std::string text;
  const auto add = [&text](const std::string& item) {
    if (!text.empty()) text += ',';
    text += item;
  };
  for (const Flag& flag : kFlags) {
    if (fault.*flag.field) add(flag.word);
  }
  if (fault.delayMs > 0) add("delay=" + std::to_string(fault.delayMs));
  for (const Place& place : kPlaces) {
    if (!(fault.*place.field)) continue;
    add(std::string(place.word) + "=" + std::to_string(*(fault.*place.field)));
    if (place.field == &Fault::garblesAt) text.append(":").append(std::to_string(fault.garbleBits));
  }
  return text.empty() ? "-" : text;
}

std::optional<Fault> FaultFromText(std::string_view text) {
  Fault fault;
  if (text == "-") return fault;
  for (bool last = false; !last;) {
    const size_t comma = text.find(',');
    last = comma == text.npos;
    const std::string_view item = text.substr(0, comma);
    if (!last) text.remove_prefix(comma + 1);
    const size_t equals = item.find('=');
    const bool known = equals == item.npos
                           ? SetFlag(fault, item)
                           : SetNumber(fault, item.substr(0, equals), item.substr(equals + 1));
    if (!known) return std::nullopt;
  }
  return fault;
}

std::vector<std::string> AfterFault(const Fault& fault, const std::vector<std::string>& datagrams) {
  if (fault.silence || fault.losesCommand || fault.losesReply || datagrams.empty()) return {};
  std::vector<std::string> arriving;
  for (std::string bytes : datagrams) {
    if (fault.empties) bytes.clear();
    if (fault.garblesAt) bytes = Garbled(bytes, fault);
    if (fault.truncateAt && bytes.size() > 1) {
      bytes.resize(InnerPlace(bytes.size(), *fault.truncateAt));
    }
    if (fault.splitAt && bytes.size() > 1) {
      const size_t place = InnerPlace(bytes.size(), *fault.splitAt);
      arriving.push_back(bytes.substr(0, place));
      bytes.erase(0, place);
    }
    arriving.push_back(bytes);
  }
  if (fault.duplicates) {
    const size_t count = arriving.size();
    for (size_t i = 0; i < count; ++i) arriving.push_back(std::string(arriving[i]));
  }
  return arriving;
}

}  // namespace simulator
