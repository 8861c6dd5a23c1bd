// SPDX-License-Identifier: MIT
// A mount service and a controller whose every word the test decides.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "gateways/mount/mount.h"
#include "simulator/scripted_controller.h"
#include "tests/gateways/mount/event_log.h"
#include "tests/support/eventually.h"

class ScriptedMount : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{20};  // a deadline, not a wait
  static constexpr int kSoonMs = 20'000;
  static constexpr velquin::SkyPoint kTarget{5.5, 22.0};
  // Clock, state, two unused, polar axis, declination circle, park coordinates, position, mode.
  static constexpr const char* kAtHome = "60000.5,0,0,0,270.0,90.0,270.0,30.0,6.0,90.0,4";
  static constexpr const char* kTracking = "60000.5,1,0,0,270.0,30.0,270.0,30.0,3.0,10.0,4";
  static constexpr const char* kSlewing = "60000.5,2,0,0,270.0,30.0,270.0,30.0,4.0,15.0,4";
  static constexpr const char* kAtTarget = "60000.5,1,0,0,270.0,30.0,270.0,30.0,5.5,22.0,4";
  static constexpr const char* kParked = "60000.5,3,0,0,270.0,60.0,270.0,30.0,7.0,60.0,1";

  ScriptedMount() {
    controller.LooksLikeAMount();
    controller.Status(kTracking);
    velquin::MountOptions options;
    options.activePoll = std::chrono::milliseconds(10);
    options.idlePoll = std::chrono::milliseconds(10);
    Make(options);
  }

  void Make(const velquin::MountOptions& options) {
    mount.reset();
    mount = std::make_unique<velquin::Mount>(options);
    mount->AddListener(events.AsListener());
  }
  void Connect() {
    mount->Connect(controller.Address());
    ASSERT_TRUE(events.WaitFor(velquin::Event::Kind::kConnected));
    controller.Clear();
  }
  /// @return a status line of these values.
  static std::string Line(const char* values) { return std::string("$MTSTA=") + values; }
  /// @return the outcome, which must come in time.
  static velquin::Outcome Of(const velquin::Ticket& ticket) {
    const auto outcome = ticket.WaitFor(kSoon);
    EXPECT_TRUE(outcome.has_value());
    return outcome.value_or(velquin::Outcome::kNoAnswer);
  }
  bool ShowsMotion(velquin::Motion motion) {
    return Eventually([&] { return mount->State().motion == motion; }, kSoon);
  }
  bool ShowsConnection(velquin::Connection connection) {
    return Eventually([&] { return mount->State().connection == connection; }, kSoon);
  }
  /// What the mount was sent, without queries.
  std::vector<std::string> Sent() {
    std::vector<std::string> sent;
    for (const std::string& command : controller.Commands()) {
      if (command.back() != '?') sent.push_back(command);
    }
    return sent;
  }

  simulator::ScriptedController controller;
  EventLog events;
  std::unique_ptr<velquin::Mount> mount;
};
