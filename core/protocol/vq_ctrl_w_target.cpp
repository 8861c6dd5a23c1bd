// SPDX-License-Identifier: MIT
// Goto, alignment and stop.
#include "core/protocol/command_text.h"
#include "core/protocol/reply.h"
#include "core/protocol/vq_ctrl_w.h"
#include "framework/base/message_box.h"
#include "res/string_ids.h"

using command_text::DegreesToHours;

int CVQCtrlW::Goto(int32_t mode, const double* target, const CString& name, CString& reply) {
  return SendTarget(mode, DegreesToHours(target[0]), target[1], name, reply);
}

// Sends the command itself: the home position is not a position in the sky, so an answer about the
// horizon has no meaning here.
int CVQCtrlW::GotoHome(CString& reply) {
  return Exchange(command_text::Home(), "$MTTGT=", reply);
}

int CVQCtrlW::GotoPark(CString& reply) {
  return SendTarget(command_text::kPark, statusF6, statusF7, "Park", reply);
}

int CVQCtrlW::GotoStar(CString& reply) {
  return SendTarget(command_text::kEquatorial, DegreesToHours(position[0]), position[1], "Star",
                    reply);
}

int CVQCtrlW::Align(const double* target, int32_t mode, const CString& name, CString& reply) {
  const CString command = command_text::Align(mode, DegreesToHours(target[0]), target[1], name);
  return Exchange(command, "$ALIGN=", reply);
}

int CVQCtrlW::ResetAlign(CString& reply) {
  reply = link.Query(command_text::kResetAlignment);
  return 1;
}

int CVQCtrlW::StopMotion(CString& reply) {
  return Exchange(command_text::kStop, "$MTSTP=", reply);
}

int CVQCtrlW::SendTarget(int32_t mode, double raHours, double decDegrees, const CString& name,
                         CString& reply) {
  const CString command = command_text::Target(mode, raHours, decDegrees, name);
  if (Exchange(command, "$MTTGT=", reply) == 0) return 0;
  if (IsBelowHorizon(reply)) {
    AfxMessageBox(kTextBelowHorizon);
    return 0;
  }
  return 1;
}
