// SPDX-License-Identifier: MIT
#include <set>

#include "core/protocol/mount_status.h"
#include "core/protocol/vq_ctrl_w.h"
#include "tests/core/protocol/vq_ctrl_probe.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_wire.h"
#include "tests/fuzz/targets.h"
#include "tests/fuzz/text_model.h"

namespace {

const MountStatus kUntouched = {1.0, 2, 3.0, 4.0, 5.0, 6.0, 7.0, 8};

class Model {
 public:
  explicit Model(const std::string& line) {
    const std::vector<std::string> parts = ModelFields(line, "=");
    isStatus = !parts.empty() && ModelSame(parts[0], "$MTSTA");
    if (parts.size() > 1) fields = ModelFields(parts[1], ",");
  }
  double Double(size_t index) const {
    return index < fields.size() ? ModelDouble(fields[index]) : 0.0;
  }
  int32_t Int(size_t index) const { return index < fields.size() ? ModelInt(fields[index]) : 0; }
  double RaDegrees() const { return Double(8) / 24.0 * 360.0; }
  int32_t PierSide() const { return Double(5) <= 90.0 ? 1 : -1; }
  bool IsReady() const {
    static const std::set<int32_t> observing = {3, 4, 5, 6, 7, 8, 9, 10, 12, 13, 14};
    return Int(1) != 3 && observing.count(Int(10)) == 1;
  }

  bool isStatus = false;
  std::vector<std::string> fields;
};

void CheckDecoded(const std::string& line) {
  const Model model(line);
  MountStatus status = kUntouched;
  const bool decoded = DecodeStatus(CString(line.data(), static_cast<int>(line.size())), status);
  Require(decoded == model.isStatus, "what is a status line");
  if (!decoded) {
    Require(status.controllerMjd == kUntouched.controllerMjd && status.state == kUntouched.state &&
                status.axisAngleDegrees == kUntouched.axisAngleDegrees &&
                status.park1 == kUntouched.park1 && status.park2 == kUntouched.park2 &&
                status.raDegrees == kUntouched.raDegrees &&
                status.decDegrees == kUntouched.decDegrees && status.mode == kUntouched.mode,
            "a refused line leaves the status alone");
    return;
  }
  Require(SameNumber(status.controllerMjd, model.Double(0)), "the clock");
  Require(status.state == model.Int(1), "the state");
  Require(SameNumber(status.axisAngleDegrees, model.Double(5)), "the axis angle");
  Require(SameNumber(status.park1, model.Double(6)), "the first park coordinate");
  Require(SameNumber(status.park2, model.Double(7)), "the second park coordinate");
  Require(SameNumber(status.raDegrees, model.RaDegrees()), "the right ascension");
  Require(SameNumber(status.decDegrees, model.Double(9)), "the declination");
  Require(status.mode == model.Int(10), "the mode");
  Require(status.PierSide() == model.PierSide(), "the pier side");
  Require(status.IsReady() == model.IsReady(), "ready to observe");
}

// The first line of a datagram that has one, as the session sees it.
std::string FirstLine(const std::string& datagram) {
  return UpToNul(datagram.substr(0, datagram.find("\r\n")));
}

void CheckRead(const std::string& datagram) {
  TheWire() = {};
  CVQCtrlW session;
  VQCtrlProbe probe(session);
  Require(probe.Link().Open(kNumericHost, CUdpLink::kDefaultPort) == 1, "the link opens");
  TheWire().datagram = datagram;
  double position[2] = {-1.0, -2.0};
  int32_t state = -3;
  int32_t ready = -4;
  const Model model(FirstLine(datagram));
  // Nobody needs to ask for more than the state.
  Require(session.ReadStatus(nullptr, &state, nullptr) == (model.isStatus ? 1 : 0),
          "the result of ReadStatus for the state alone");
  session.Close();
  probe.Link().Open(kNumericHost, CUdpLink::kDefaultPort);
  TheWire().sent.clear();
  state = -3;
  const int result = session.ReadStatus(position, &state, &ready);
  RequireSame(TheWire().sent, "$MTSTA?\r\n", "the query");
  Require(result == (model.isStatus ? 1 : 0), "the result of ReadStatus");
  int32_t side = 0;
  session.GetPierSide(&side);
  if (!model.isStatus) {
    Require(position[0] == -1.0 && position[1] == -2.0 && state == -3 && ready == -4,
            "a failed poll gives nothing");
    Require(side == 0 && probe.ControllerMjd() == -1.0, "a failed poll keeps nothing");
    return;
  }
  Require(SameNumber(position[0], model.RaDegrees()), "the right ascension that is given");
  Require(SameNumber(position[1], model.Double(9)), "the declination that is given");
  Require(state == model.Int(1), "the state that is given");
  Require(ready == (model.IsReady() ? 1 : 0), "the operating flag that is given");
  Require(side == -model.PierSide(), "the pier side that is kept");
  Require(SameNumber(probe.ControllerMjd(), model.Double(0)), "the clock that is kept");
  Require(SameNumber(probe.StatusF6(), model.Double(6)), "the first park coordinate that is kept");
  Require(SameNumber(probe.StatusF7(), model.Double(7)), "the second park coordinate that is kept");
}

}  // namespace

void FuzzStatus(FuzzInput input) {
  // One byte in front, so that most inputs begin as the controller's lines do.
  const bool withKey = input.Choice(4) != 0;
  const std::string line = (withKey ? "$MTSTA=" : "") + input.Rest();
  CheckDecoded(line);
  CheckRead(line + "\r\n");
}
