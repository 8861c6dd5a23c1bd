// SPDX-License-Identifier: MIT
// The observing site and the controller's clock.
#include <cmath>

#include "protocol/reply.h"
#include "protocol/vq_ctrl_w.h"
#include "util/string_sep.h"

int CVQCtrlW::SetLocation(const double* site, int32_t zone, CString& reply) {
  CString command;
  command.Format("$SYLOC=%8.3f,%7.3f,%d", site[1], site[0], zone);
  return Exchange(command, "$SYLOC=", reply);
}

int CVQCtrlW::GetLocation(double* site, int32_t* zone, CString& reply) {
  if (Exchange("$SYLOC?", "$SYLOC=", reply) == 0) return 0;
  CStringSep fields;
  fields.Set(ReplyValue(reply), ",", 0);
  if (fields.GetCount() != 3) return 0;
  site[1] = fields.atof(0, 0.0);
  site[0] = fields.atof(1, 0.0);
  *zone = fields.atoi(2, 0);
  return 1;
}

int CVQCtrlW::SetLocalTime(const SiteTime& time, CString& reply) {
  SiteTime sent = time;
  sent.second = 0.0;
  if (std::floor(time.second + 0.05) == 60.0) {
    SiteTime oneMinute = {};
    oneMinute.minute = 1;
    AddDateTime(sent, oneMinute, 0);
  }
  CString command;
  command.Format("$SYLTM=%04d,%02d,%02d,%02d,%02d,%04.1f", sent.year, sent.month, sent.day,
                 sent.hour, sent.minute, sent.second);
  return Exchange(command, "$SYLTM=", reply);
}

int CVQCtrlW::GetUtcTime(SiteTime& time, CString& reply) {
  if (Exchange("$SYUTM?", "$SYUTM=", reply) == 0) return 0;
  CStringSep fields;
  fields.Set(ReplyValue(reply), ",", 0);
  if (fields.GetCount() != 6) return 0;
  time.year = fields.atoi(0, 0);
  time.month = fields.atoi(1, 0);
  time.day = fields.atoi(2, 0);
  time.hour = fields.atoi(3, 0);
  time.minute = fields.atoi(4, 0);
  time.second = fields.atoi(5, 0);
  time.zone = 0.0;
  return 1;
}

int CVQCtrlW::InitMount(CString& reply) {
  return Exchange("$MTINI=1", "$MTINI=", reply);
}

int CVQCtrlW::GetControllerMjd(double* mjd) const {
  *mjd = controllerMjd;
  return 1;
}
