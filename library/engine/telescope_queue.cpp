// SPDX-License-Identifier: MIT
// The queue and the worker's cycle: drain the queue, then poll.
#include "library/engine/telescope.h"

int CTelescope::OnProcess() {
  {
    const CSingleLock guard(lock);
    processFlag = 0;
    busy = 1;
  }
  for (bool last = false; !last;) {
    const int32_t code = TakeCommand(last);
    if (code == kCommandNone) break;
    if (code == kCommandClose) {
      device.Close();
      return 0;
    }
    try {
      Perform(code);
    } catch (...) {
      // Out of memory. The request is lost, as if the controller had not answered.
    }
  }
  const CSingleLock guard(lock);
  busy = 0;
  return 1;
}

int CTelescope::OnPoll() {
  double radec[2] = {};
  int32_t state = 0;
  int32_t ready = 0;
  int success = 0;
  try {
    success = device.ReadStatus(radec, &state, &ready);
  } catch (...) {
    // Out of memory: counts as a failed poll.
  }
  if (success == 0) {
    ++PollFailCount;
    return 1;
  }
  PollFailCount = 0;
  constexpr int32_t kStateSlewing = 2;
  const CSingleLock guard(lock);
  slewing = state == kStateSlewing ? 1 : 0;
  operating = ready;
  position[0] = radec[0];
  position[1] = radec[1];
  return 1;
}

void CTelescope::Enqueue(int32_t code) {
  CommandQueue.Add(code);
}

int CTelescope::EnqueueAlone(int32_t code) {
  const CSingleLock guard(lock);
  Enqueue(code);
  return 1;
}

// @param last becomes true if this was the only code
int32_t CTelescope::TakeCommand(bool& last) {
  const CSingleLock guard(lock);
  if (CommandQueue.IsEmpty()) return kCommandNone;
  const int32_t code = CommandQueue[0];
  CommandQueue.RemoveAt(0);
  last = CommandQueue.IsEmpty();
  return code;
}

// The results are ignored: the next poll shows the mount's actual state.
void CTelescope::Perform(int32_t code) {
  CString reply;
  switch (code) {
    case kCommandSiteAndClock:
      SendSiteAndClock();
      break;
    case kCommandGoto:
      PerformGoto();
      break;
    case kCommandSync:
      PerformSync();
      break;
    case kCommandHandMove:
      PerformHandMove();
      break;
    case kCommandGuideSpeed:
      PerformGuideSpeed();
      break;
    case kCommandGuidePulses:
      PerformGuidePulses();
      break;
    case kCommandStop:
      PerformStop();
      break;
    case kCommandHome:
      device.GotoHome(reply);
      break;
    case kCommandAlignReset:
      device.ResetAlign(reply);
      break;
    case kCommandPark:
      device.GotoPark(reply);
      break;
    case kCommandUnPark:
      device.GotoStar(reply);
      break;
    default:
      break;
  }
}
