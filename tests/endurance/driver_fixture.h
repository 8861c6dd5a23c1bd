// SPDX-License-Identifier: MIT
// A host with the built library and a controller that it talks to.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "simulator/scripted_controller.h"
#include "tests/endurance/driver.h"
#include "tests/support/eventually.h"
#include "tests/support/temp_folder.h"

class DriverTest : public testing::Test {
 protected:
  static constexpr int kSoonMs = 10'000;  // a deadline, not a wait
  static constexpr std::chrono::seconds kSoon{10};

  DriverTest() {
    controller.LooksLikeAMount();
    driver.SetLogPath(nullptr, (journals.Narrow() + "\\").c_str());
  }
  ~DriverTest() override { driver.End(nullptr); }

  int Connect() { return driver.Start(nullptr, controller.Address().c_str(), nullptr, 0); }
  /// Connects, lets polls come in and forgets what was sent so far.
  void StartSession() {
    ASSERT_EQ(Connect(), 1);
    ASSERT_TRUE(controller.WaitForCount("$MTSTA?", 2, kSoonMs));
    controller.Clear();
  }
  /// Waits for a poll that began after this call.
  bool PollsAgain() {
    return controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 2, kSoonMs);
  }
  /// What was sent since the last Clear, without the polls, once the worker polls again.
  std::vector<std::string> Requests() {
    EXPECT_TRUE(PollsAgain());
    std::vector<std::string> requests;
    for (const std::string& command : controller.Commands()) {
      if (command != "$MTSTA?") requests.push_back(command);
    }
    return requests;
  }

  TempFolder journals;
  simulator::ScriptedController controller;
  Driver driver;
};
