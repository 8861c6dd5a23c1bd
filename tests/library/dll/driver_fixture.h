// SPDX-License-Identifier: MIT
// The loaded library, a controller for it, and somebody who answers boxes that a test left open.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "simulator/scripted_controller.h"
#include "tests/library/dll/message_boxes.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/temp_folder.h"

class DriverTest : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{10};  // a deadline, not a wait
  static constexpr int kSoonMs = 10'000;

  DriverTest();
  ~DriverTest() override;

  int32_t Start() { return driver.Start(nullptr, controller.Address().c_str(), nullptr, 0); }
  /// Starts, waits for the first position and forgets what was sent for that.
  void StartSession();
  /// Waits for a poll that began after this call, and for the cycle before it to be over.
  bool PollsAgain();
  /// The datagrams so far, byte for byte, without the polls.
  std::vector<std::string> Requests();
  /// The same, after all that was queued has been sent. It asks for something that no test looks
  /// at, which is sent last.
  std::vector<std::string> Sent();
  /// The same for what had been queued before the session, which it starts.
  std::vector<std::string> SentByANewSession();

  TempFolder folder;  // the journals land here
  simulator::ScriptedController controller;
  DriverLibrary driver;
};
