// SPDX-License-Identifier: MIT
// The language of the protocol's tests: a controller that answers like a mount, one session with
// it, and somebody who reads the message boxes.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "core/protocol/vq_ctrl_w.h"
#include "framework/base/cstring.h"
#include "simulator/scripted_controller.h"
#include "tests/core/net/patience.h"
#include "tests/core/net/platform_faults.h"
#include "tests/core/net/record_texts.h"
#include "tests/core/net/udp_link_probe.h"
#include "tests/core/protocol/box_recorder.h"
#include "tests/core/protocol/vq_ctrl_probe.h"

class MountSession : public testing::Test {
 protected:
  static constexpr int kDeadlineMs = 5000;

  MountSession() { controller.LooksLikeAMount(); }

  int Open() { return session.Open(controller.Address().c_str(), 80, 0); }
  /// Opens the link alone and asks nothing.
  void Connect() {
    ASSERT_EQ(probe.Link().Open(controller.Address().c_str(), CUdpLink::kDefaultPort), 1);
  }
  void PollStatus(const std::string& values) {
    controller.Status(values);
    int32_t state = 0;
    ASSERT_EQ(session.ReadStatus(nullptr, &state, nullptr), 1);
    controller.Clear();
  }

  /// @return all commands since the last call.
  std::vector<std::string> Sent() {
    std::vector<std::string> commands = controller.Commands();
    controller.Clear();
    return commands;
  }
  std::vector<std::string> Records() { return RecordTexts(probe.Link()); }
  std::string Reply() const { return reply.GetString(); }

  BoxRecorder app;
  simulator::ScriptedController controller;
  PlatformFaults faults;  // after the controller, whose sockets are none of its business
  Patience patience{faults};
  CVQCtrlW session;
  VQCtrlProbe probe{session};
  CString reply = "untouched";
};
