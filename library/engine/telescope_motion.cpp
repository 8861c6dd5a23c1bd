// SPDX-License-Identifier: MIT
// All motion requests: the functions for the host store and queue, those for the worker send.
#include <algorithm>
#include <climits>
#include <iterator>

#include "core/protocol/command_text.h"
#include "framework/base/message_box.h"
#include "library/engine/telescope.h"
#include "platform/debug_output.h"
#include "platform/threads.h"
#include "res/string_ids.h"

namespace {

constexpr int32_t kPulseGapMs = 50;

}  // namespace

// --- Called by the host -----------------------------------------------------------------------

int CTelescope::Look(const double* radec) {
  const CSingleLock guard(lock);
  if (radec != nullptr) StoreTarget(radec);
  Enqueue(kCommandGoto);
  return 1;
}

int CTelescope::Sync(const double* radec) {
  const CSingleLock guard(lock);
  if (radec != nullptr) StoreTarget(radec);
  Enqueue(kCommandSync);
  return 1;
}

int CTelescope::SetPos(const double* radec) {
  const CSingleLock guard(lock);
  StoreTarget(radec);
  return 1;
}

int CTelescope::Slew(int32_t direction, int32_t push, int32_t speedStep) {
  const CSingleLock guard(lock);
  CString trace;
  trace.Format("dir %d  push %d  speed %d ----- \n", direction, push ? 1 : 0, speedStep);
  platform::DebugOutput(trace);
  handSpeed = speedStep;
  handNorth = direction == TELESCOPE_NORTH ? push : 0;
  handSouth = direction == TELESCOPE_SOUTH ? push : 0;
  handEast = direction == TELESCOPE_EAST ? push : 0;
  handWest = direction == TELESCOPE_WEST ? push : 0;
  // A release queues nothing: the controller ends the move by itself.
  if (push == 0) return 1;
  const ptrdiff_t count = CommandQueue.GetSize();
  if (count == 0 || CommandQueue[count - 1] != kCommandHandMove) Enqueue(kCommandHandMove);
  fastPoll = push;
  return 1;
}

int CTelescope::Stop() {
  const CSingleLock guard(lock);
  bool closing = false;
  for (ptrdiff_t i = 0; i < CommandQueue.GetSize(); ++i) {
    closing = closing || CommandQueue[i] == kCommandClose;
  }
  CommandQueue.RemoveAll();
  Enqueue(kCommandStop);
  // The thread that ends the session waits until the worker has taken this request.
  if (closing) Enqueue(kCommandClose);
  return 1;
}

int CTelescope::Home() {
  return EnqueueAlone(kCommandHome);
}

int CTelescope::Park() {
  return EnqueueAlone(kCommandPark);
}

int CTelescope::UnPark() {
  return EnqueueAlone(kCommandUnPark);
}

int CTelescope::SetGuideSpeed(double rateA, double rateB) {
  const CSingleLock guard(lock);
  Enqueue(kCommandGuideSpeed);
  guideRateA = rateA;
  guideRateB = rateB;
  return 1;
}

int CTelescope::SlewPulseDuration(int32_t northMs, int32_t southMs, int32_t eastMs, int32_t westMs,
                                  double rateA, double rateB) {
  const CSingleLock guard(lock);
  pulseRateA = rateA;
  pulseRateB = rateB;
  pulseMs[0] = northMs;
  pulseMs[1] = southMs;
  pulseMs[2] = eastMs;
  pulseMs[3] = westMs;
  Enqueue(kCommandGuidePulses);
  return 1;
}

void CTelescope::StoreTarget(const double* radec) {
  target[0] = radec[0];
  target[1] = radec[1];
  targetValid = 1;
}

// --- Called by the worker ---------------------------------------------------------------------

bool CTelescope::CopyTarget(double* radec) {
  const CSingleLock guard(lock);
  radec[0] = target[0];
  radec[1] = target[1];
  return targetValid != 0;
}

void CTelescope::PerformGoto() {
  double radec[2];
  if (!CopyTarget(radec)) {
    AfxMessageBox(kTextCommandRefused);
    return;
  }
  CString reply;
  device.Goto(command_text::kEquatorial, radec, "", reply);
}

void CTelescope::PerformSync() {
  double radec[2];
  if (!CopyTarget(radec)) return;
  CString reply;
  device.Align(radec, command_text::kEquatorial, "", reply);
}

void CTelescope::PerformStop() {
  CString reply;
  device.StopMotion(reply);
  device.HandMove(0, 0, 0, 0, reply);
}

void CTelescope::PerformHandMove() {
  // The current flags, not those from when the code was queued.
  Lock();
  const int32_t step = handSpeed;
  const HandMoveFlags flags = {handNorth, handSouth, handEast, handWest};
  Unlock();
  CString reply;
  if (device.SetHandSpeed(step, reply) == 0) return;
  device.HandMove(flags.north, flags.south, flags.east, flags.west, reply);
}

void CTelescope::PerformGuideSpeed() {
  Lock();
  const double rateA = guideRateA;
  const double rateB = guideRateB;
  Unlock();
  CString reply;
  device.SendGuideSpeed(rateA, rateB, reply);
}

void CTelescope::PerformGuidePulses() {
  int32_t lengthsMs[4];
  Lock();
  const double rateA = pulseRateA;
  const double rateB = pulseRateB;
  std::copy(std::begin(pulseMs), std::end(pulseMs), lengthsMs);
  Unlock();
  // North, south, east, west. East is negative here, but positive in a hand move.
  const double raRates[4] = {0.0, 0.0, -rateA, rateA};
  const double decRates[4] = {rateB, -rateB, 0.0, 0.0};
  for (int direction = 0; direction < 4; ++direction) {
    const int32_t ms = lengthsMs[direction];
    if (ms <= 0) continue;
    CString reply;
    device.TimedMove(ms, raRates[direction], decRates[direction], reply);
    platform::SleepMs(std::min(ms, INT_MAX - kPulseGapMs) + kPulseGapMs);
  }
}
