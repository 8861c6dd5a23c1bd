// SPDX-License-Identifier: MIT
// Moves at a rate for a time, guide speed, meridian settings.
#include "core/protocol/command_text.h"
#include "core/protocol/vq_ctrl_w.h"

namespace {

// Rates in the controller's unit: eight steps of an eighth of the full rate, and the slowest rate.
constexpr double kFullRate = 200.0;
constexpr double kSlowestRate = 0.5;
constexpr double kRatePerStep = 0.125;

double RateOfStep(int32_t step) {
  const double rate = step * kRatePerStep * kFullRate + kSlowestRate;
  if (rate >= kFullRate) return kFullRate;
  return rate > kSlowestRate ? rate : kSlowestRate;
}

}  // namespace

int CVQCtrlW::SetHandSpeed(int32_t step, CString& /*reply*/) {
  handSpeed = step;
  return 1;
}

int CVQCtrlW::HandMove(int32_t north, int32_t south, int32_t east, int32_t west, CString& reply) {
  // The controller ends the move after this time by itself, so the mount stops even if the release
  // is lost.
  constexpr double kDurationSeconds = 1.0;
  const double rate = RateOfStep(handSpeed);
  const double decRate = north ? rate : south ? -rate : 0.0;
  const double raRate = west ? -rate : east ? rate : 0.0;
  return SendMove(kDurationSeconds, raRate, decRate, reply);
}

int CVQCtrlW::TimedMove(double durationMs, double raRate, double decRate, CString& reply) {
  return SendMove(durationMs / 1000.0, raRate, decRate, reply);
}

int CVQCtrlW::SendGuideSpeed(double rateA, double rateB, CString& reply) {
  return Exchange(command_text::GuideSpeed(rateA, rateB), "$MTAGS=", reply);
}

int CVQCtrlW::SetMeridian(double stopPoint, double gotoValue, CString& reply) {
  return Exchange(command_text::Meridian(stopPoint, gotoValue), "$MTGTS=", reply);
}

int CVQCtrlW::SetGtsValue(int32_t value, CString& reply) {
  return Exchange(command_text::GtsValue(value), "$MTGTS=", reply);
}

int CVQCtrlW::SendMove(double durationSeconds, double raRate, double decRate, CString& reply) {
  return Exchange(command_text::Move(durationSeconds, raRate, decRate), "$MTMV2=", reply);
}
