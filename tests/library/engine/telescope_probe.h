// SPDX-License-Identifier: MIT
// What the engine and its thread base keep to themselves.
#pragma once

#include <cstdint>
#include <iterator>
#include <string>
#include <vector>

#include "library/engine/telescope.h"

class ThreadCtrlProbe {
 public:
  explicit ThreadCtrlProbe(CThreadCtrl& thread) : ctrl(thread) {}

  bool HasThread() const { return ctrl.thread != nullptr; }
  void SetPeriod(int32_t ms) { ctrl.period = ms; }
  void StopRunning() { ctrl.running = 0; }  ///< on the worker
  int32_t FastPoll() {
    const CSingleLock guard(ctrl.lock);
    return ctrl.fastPoll;
  }
  void SetFastPoll(int32_t value) {
    const CSingleLock guard(ctrl.lock);
    ctrl.fastPoll = value;
  }

 private:
  CThreadCtrl& ctrl;
};

class TelescopeProbe {
 public:
  explicit TelescopeProbe(CTelescope& engine) : telescope(engine) {}

  void Enqueue(int32_t code) {
    const CSingleLock guard(telescope.lock);
    telescope.Enqueue(code);
  }
  std::vector<int> Queue() {
    const CSingleLock guard(telescope.lock);
    std::vector<int> codes;
    for (ptrdiff_t i = 0; i < telescope.CommandQueue.GetSize(); ++i) {
      codes.push_back(telescope.CommandQueue[i]);
    }
    return codes;
  }
  /// @return true when the worker has performed all that was queued.
  bool IsIdle() {
    const CSingleLock guard(telescope.lock);
    return telescope.CommandQueue.IsEmpty() && telescope.busy == 0;
  }

  /// @return true from the first moment of a start on, also of one that still waits for another.
  bool SessionActive() {
    const CSingleLock guard(telescope.lock);
    return telescope.sessionActive;
  }

  /// North, south, east, west.
  std::vector<int32_t> HandFlags() {
    const CSingleLock guard(telescope.lock);
    return {telescope.handNorth, telescope.handSouth, telescope.handEast, telescope.handWest};
  }
  int32_t StoredEastWest() {
    const CSingleLock guard(telescope.lock);
    return telescope.eastWest;
  }
  /// Guide rates A and B, pulse rates A and B.
  std::vector<double> Rates() {
    const CSingleLock guard(telescope.lock);
    return {telescope.guideRateA, telescope.guideRateB, telescope.pulseRateA, telescope.pulseRateB};
  }
  /// Milliseconds: north, south, east, west.
  std::vector<int32_t> PulseLengths() {
    const CSingleLock guard(telescope.lock);
    return {std::begin(telescope.pulseMs), std::end(telescope.pulseMs)};
  }
  int32_t HandSpeed() {
    const CSingleLock guard(telescope.lock);
    return telescope.handSpeed;
  }
  /// Stores a text in the place of all those that the detail window asks for.
  void StoreTexts(const char* text) {
    const CSingleLock guard(telescope.lock);
    for (CString* field :
         {&telescope.versionText, &telescope.spareText1, &telescope.spareText2,
          &telescope.spareText3, &telescope.dateText, &telescope.timeText, &telescope.zoneText,
          &telescope.blankText, &telescope.siteTextA, &telescope.siteTextB}) {
      *field = text;
    }
  }
  int64_t SiteTimeStamp() {
    const CSingleLock guard(telescope.lock);
    return telescope.siteTimeStamp;
  }
  /// The session with the controller, for the thread that makes its exchanges.
  CVQCtrlW& Device() { return telescope.device; }
  void ApplyMeridianOverrides() { telescope.ApplyMeridianOverrides(); }

  /// Connects as a Start does, but begins no worker.
  int Connect() {
    const CSingleLock guard(telescope.sessionLock);
    return telescope.OnStart();
  }

  /// Waits for the end of a Start, Check or End of another thread.
  std::string Address() {
    const CSingleLock guard(telescope.sessionLock);
    return telescope.address.GetString();
  }
  std::string Vendor() {
    const CSingleLock guard(telescope.lock);
    return telescope.vendor.GetString();
  }
  std::string Name() {
    const CSingleLock guard(telescope.lock);
    return telescope.name.GetString();
  }
  int32_t FailedPolls() const { return telescope.PollFailCount; }

 private:
  CTelescope& telescope;
};
