// SPDX-License-Identifier: MIT
// What a session keeps to itself, for tests.
#pragma once

#include <cstdint>
#include <string>

#include "core/protocol/vq_ctrl_w.h"

class VQCtrlProbe {
 public:
  explicit VQCtrlProbe(CVQCtrlW& session) : session_(session) {}

  CUdpLink& Link() { return session_.link; }
  std::string Version() const { return session_.version.GetString(); }
  std::string Host() const { return session_.host.GetString(); }
  int32_t Port() const { return session_.port; }
  int32_t OpenArg() const { return session_.openArg; }
  int32_t ModelA() const { return session_.modelA; }
  double ModelB() const { return session_.modelB; }
  double ModelC() const { return session_.modelC; }
  int32_t HandSpeed() const { return session_.handSpeed; }
  int32_t& FineQuery() { return session_.fineQuery; }
  int32_t PierSide() const { return session_.pierSide; }
  int32_t Unparked() const { return session_.unparked; }
  double ControllerMjd() const { return session_.controllerMjd; }
  double RaDegrees() const { return session_.position[0]; }
  double DecDegrees() const { return session_.position[1]; }
  double StatusF6() const { return session_.statusF6; }
  double StatusF7() const { return session_.statusF7; }
  bool HasLogger() const { return session_.logger != nullptr; }

 private:
  CVQCtrlW& session_;
};
