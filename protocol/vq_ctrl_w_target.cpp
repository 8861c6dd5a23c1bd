// SPDX-License-Identifier: MIT
// Going to a place, aligning on one, stopping.
#include "framework/base/message_box.h"
#include "protocol/reply.h"
#include "protocol/vq_ctrl_w.h"
#include "res/string_ids.h"

namespace {

enum TargetMode : int32_t { kHome = 1, kPark = 2, kEquatorial = 3 };

double DegreesToHours(double degrees) {
  return degrees / 360.0 * 24.0;
}

// "KEY=mode,value1,value2,name"; the comma before an empty name stays.
CString TargetCommand(const char* key, int32_t mode, double value1, double value2,
                      const CString& name) {
  CString command;
  command.Format("%s=%d,%.6f,%.6f,%s", key, mode, value1, value2, name.GetString());
  return command;
}

}  // namespace

int CVQCtrlW::Goto(int32_t mode, const double* target, const CString& name, CString& reply) {
  return SendTarget(mode, DegreesToHours(target[0]), target[1], name, reply);
}

// Sends the command itself: the home position is no place in the sky, so an answer about the
// horizon means nothing here.
int CVQCtrlW::GotoHome(CString& reply) {
  return Exchange(TargetCommand("$MTTGT", kHome, 270.0, 0.0, "Home"), "$MTTGT=", reply);
}

int CVQCtrlW::GotoPark(CString& reply) {
  return SendTarget(kPark, statusF6, statusF7, "Park", reply);
}

int CVQCtrlW::GotoStar(CString& reply) {
  return SendTarget(kEquatorial, DegreesToHours(position[0]), position[1], "Star", reply);
}

int CVQCtrlW::Align(const double* target, int32_t mode, const CString& name, CString& reply) {
  const CString command = TargetCommand("$ALIGN", mode, DegreesToHours(target[0]), target[1], name);
  return Exchange(command, "$ALIGN=", reply);
}

int CVQCtrlW::ResetAlign(CString& reply) {
  reply = link.Query("$ALINI=0");
  return 1;
}

int CVQCtrlW::StopMotion(CString& reply) {
  return Exchange("$MTSTP=1", "$MTSTP=", reply);
}

int CVQCtrlW::SendTarget(int32_t mode, double raHours, double decDegrees, const CString& name,
                         CString& reply) {
  const CString command = TargetCommand("$MTTGT", mode, raHours, decDegrees, name);
  if (Exchange(command, "$MTTGT=", reply) == 0) return 0;
  if (ReplyValue(reply).CompareNoCase("BELOWHORIZON") == 0) {
    AfxMessageBox(kTextBelowHorizon);
    return 0;
  }
  return 1;
}
