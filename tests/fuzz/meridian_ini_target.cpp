// SPDX-License-Identifier: MIT
#include <strings.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdio>
#include <optional>
#include <stdexcept>

#include "library/engine/telescope.h"
#include "tests/core/protocol/vq_ctrl_probe.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_wire.h"
#include "tests/fuzz/targets.h"
#include "tests/fuzz/text_model.h"
#include "tests/library/engine/telescope_probe.h"

namespace {

constexpr size_t kLongestValue = 127;
constexpr char kStopKey[] = "_OverrideMeridianStopPoint";
constexpr char kGotoKey[] = "_OverrideMeridianGoto";

// A file in memory with a path, so that the code under test opens it as any other.
class MemoryFile {
 public:
  MemoryFile() : descriptor(memfd_create("ini", MFD_CLOEXEC)) {
    if (descriptor < 0) throw std::runtime_error("no file in memory");
    std::snprintf(path, sizeof path, "/proc/self/fd/%d", descriptor);
  }
  ~MemoryFile() { close(descriptor); }
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;

  void Hold(const std::string& bytes) {
    if (ftruncate(descriptor, 0) != 0 ||
        pwrite(descriptor, bytes.data(), bytes.size(), 0) != static_cast<ssize_t>(bytes.size())) {
      throw std::runtime_error("the file in memory cannot be written");
    }
  }
  const char* Path() const { return path; }

 private:
  int descriptor;
  char path[32];
};

std::string WithoutBlanks(const std::string& text) {
  constexpr char kBlanks[] = " \t\r\n";
  const size_t first = text.find_first_not_of(kBlanks);
  if (first == std::string::npos) return "";
  return text.substr(first, text.find_last_not_of(kBlanks) + 1 - first);
}

bool IsNamed(const std::string& found, const std::string& name) {
  return strcasecmp(found.c_str(), name.c_str()) == 0;
}

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (size_t start = 0; start < text.size();) {
    const size_t end = std::min(text.find('\n', start), text.size());
    lines.push_back(WithoutBlanks(text.substr(start, end - start)));
    start = end + 1;
  }
  return lines;
}

// The first value of the key in any section of the name, without one pair of quotes.
std::optional<std::string> ModelValue(const std::string& file, const std::string& section,
                                      const std::string& key) {
  bool found = false;
  for (const std::string& line : Lines(file)) {
    if (!line.empty() && line[0] == '[') {
      found = IsNamed(line.substr(1, std::min(line.find(']'), line.size()) - 1), section);
    } else if (found && !line.empty() && line[0] != ';' && line.find('=') != std::string::npos) {
      const size_t equals = line.find('=');
      if (!IsNamed(WithoutBlanks(line.substr(0, equals)), key)) continue;
      const std::string value = WithoutBlanks(line.substr(equals + 1));
      const bool quoted = value.size() > 1 && value.front() == value.back() &&
                          (value[0] == '"' || value[0] == '\'');
      return quoted ? value.substr(1, value.size() - 2) : value;
    }
  }
  return std::nullopt;
}

double ModelNumber(const std::string& file, const std::string& section, const std::string& key,
                   double fallback) {
  const std::optional<std::string> value = ModelValue(file, section, key);
  return value ? ModelDouble(value->substr(0, kLongestValue)) : fallback;
}

std::string ModelCommand(double stopPoint, double gotoValue) {
  // A double has up to 309 digits before its point.
  char text[800];
  std::snprintf(text, sizeof text, "$MTCOM=%f,%f\r\n", stopPoint, gotoValue);
  return text;
}

}  // namespace

void FuzzMeridianIni(FuzzInput input) {
  static MemoryFile file;
  // The choice in front makes most inputs a file whose section and keys are there.
  const unsigned shape = input.Choice(4);
  const std::string section = shape == 0 ? UpToNul(input.Line()) : "Mount";
  std::string text;
  if (shape != 0) {
    text = "[Mount]\n" + std::string(kStopKey) + "=" + input.Line() + "\n";
    if (shape != 1) text += std::string(kGotoKey) + " = " + input.Line() + "\n";
  }
  text += input.Rest();
  file.Hold(text);

  TheWire() = {};
  TheWire().datagram = "$MTCOM=1\r\n";
  static CTelescope engine;
  TelescopeProbe probe(engine);
  VQCtrlProbe device(probe.Device());
  Require(device.Link().Open(kNumericHost, CUdpLink::kDefaultPort) == 1, "the link opens");
  engine.SetIni(file.Path(), section.c_str());
  probe.ApplyMeridianOverrides();
  device.Link().Close();

  const double stopPoint = ModelNumber(text, section, kStopKey, 0.0);
  const double gotoValue = ModelNumber(text, section, kGotoKey, 3.0);
  RequireSame(TheWire().sent, ModelCommand(stopPoint, gotoValue), "the command");
}
