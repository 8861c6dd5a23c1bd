// SPDX-License-Identifier: MIT
#include "tests/library/faults/host_watch.h"

#include "tests/library/dll/message_boxes.h"

namespace {

constexpr DWORD kReadEveryMs = 3;
constexpr DWORD kStoreEveryMs = 4;
constexpr double kTarget[2] = {83.633, 22.0145};  // always the same: what is stored may be sent
constexpr DWORD kLookForBoxesEveryMs = 10;

}  // namespace

HostWatch::HostWatch(const DriverLibrary& driver, std::function<double()> nowMs)
    : driver_(driver), nowMs_(std::move(nowMs)) {
  reader_ = std::thread([this] { Read(); });
  storer_ = std::thread([this] { Store(); });
  user_ = std::thread([this] { AnswerBoxes(); });
}

HostWatch::~HostWatch() {
  stopping_ = true;
  reader_.join();
  storer_.join();
  user_.join();
}

std::pair<std::string, double> HostWatch::LongestCall() const {
  const std::lock_guard guard(lock_);
  return longestCall_;
}

std::vector<SkyPosition> HostWatch::Positions() const {
  const std::lock_guard guard(lock_);
  return positions_;
}

void HostWatch::Read() {
  for (; !stopping_; Sleep(kReadEveryMs)) {
    double radec[2] = {};
    const int valid = AtOnce("GetPos", [&] { return driver_.GetPos(nullptr, radec); });
    const SkyPosition position = {radec[0], radec[1]};
    if (valid == 1) {
      const std::lock_guard guard(lock_);
      if (positions_.empty() || positions_.back() != position) positions_.push_back(position);
    }
    AtOnce("GetStatus", [&] { return driver_.GetStatus(nullptr); });
    AtOnce("GetParking", [&] { return driver_.GetParking(nullptr); });
    AtOnce("GetEastWest", [&] { return driver_.GetEastWest(nullptr); });
    AtOnce("GetSlewSpeedMax", [&] { return driver_.GetSlewSpeedMax(nullptr); });
  }
}

void HostWatch::Store() {
  for (; !stopping_; Sleep(kStoreEveryMs)) {
    AtOnce("SetName", [&] { return driver_.SetName(nullptr, "Scope"); });
    AtOnce("SetVendor", [&] { return driver_.SetVendor(nullptr, "Vendor"); });
    AtOnce("SetIni", [&] { return driver_.SetIni(nullptr, "none.ini", "Mount"); });
    AtOnce("SetPos", [&] { return driver_.SetPos(nullptr, kTarget); });
    AtOnce("SetEastWest", [&] { return driver_.SetEastWest(nullptr, 1); });
  }
}

void HostWatch::AnswerBoxes() {
  for (; !stopping_; Sleep(kLookForBoxesEveryMs)) {
    const auto box = FindMessageBox();
    if (!box) continue;
    boxFoundMs_ = nowMs_();
    PressOk(*box);
  }
}

void HostWatch::Note(const char* name, double durationMs) {
  const std::lock_guard guard(lock_);
  if (durationMs > longestCall_.second) longestCall_ = {name, durationMs};
}
