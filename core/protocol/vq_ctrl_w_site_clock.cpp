// SPDX-License-Identifier: MIT
// The observing site and the controller's clock.
#include <cmath>

#include "core/protocol/command_text.h"
#include "core/protocol/reply.h"
#include "core/protocol/vq_ctrl_w.h"

int CVQCtrlW::SetLocation(const double* site, int32_t zone, CString& reply) {
  return Exchange(command_text::Site(site[0], site[1], zone), "$SYLOC=", reply);
}

int CVQCtrlW::GetLocation(double* site, int32_t* zone, CString& reply) {
  if (Exchange(command_text::kSiteQuery, "$SYLOC=", reply) == 0) return 0;
  SiteReply answer;
  if (!DecodeSite(reply, answer)) return 0;
  site[0] = answer.latitudeDegrees;
  site[1] = answer.longitudeDegrees;
  *zone = answer.zone;
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
  return Exchange(command_text::LocalTime(sent), "$SYLTM=", reply);
}

int CVQCtrlW::GetUtcTime(SiteTime& time, CString& reply) {
  if (Exchange(command_text::kUtcQuery, "$SYUTM=", reply) == 0) return 0;
  return DecodeUtc(reply, time) ? 1 : 0;
}

int CVQCtrlW::InitMount(CString& reply) {
  return Exchange(command_text::kInitialise, "$MTINI=", reply);
}

int CVQCtrlW::GetControllerMjd(double* mjd) const {
  *mjd = controllerMjd;
  return 1;
}
