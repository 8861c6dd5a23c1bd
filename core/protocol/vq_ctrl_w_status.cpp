// SPDX-License-Identifier: MIT
// The status poll: one line with everything that changes without a command.
#include "core/protocol/command_text.h"
#include "core/protocol/mount_status.h"
#include "core/protocol/vq_ctrl_w.h"

int CVQCtrlW::ReadStatus(double* newPosition, int32_t* state, int32_t* ready) {
  MountStatus status;
  if (!DecodeStatus(link.Query(command_text::kStatusQuery), status)) return 0;
  statusF6 = status.park1;
  statusF7 = status.park2;
  position[0] = status.raDegrees;
  position[1] = status.decDegrees;
  if (newPosition != nullptr) {
    newPosition[0] = position[0];
    newPosition[1] = position[1];
  }
  *state = status.state;
  controllerMjd = status.controllerMjd;
  pierSide.store(status.PierSide(), std::memory_order_relaxed);
  unparked = status.IsReady() ? 1 : 0;
  if (ready != nullptr) *ready = unparked;
  return 1;
}

int CVQCtrlW::GetPierSide(int32_t* side) const {
  *side = -pierSide.load(std::memory_order_relaxed);
  return 1;
}
