// SPDX-License-Identifier: MIT
// The language of the link's tests: a controller that does as it is told, and one link to it.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <vector>

#include "core/net/udp_link.h"
#include "simulator/scripted_controller.h"
#include "tests/core/net/patience.h"
#include "tests/core/net/platform_faults.h"
#include "tests/core/net/record_texts.h"
#include "tests/core/net/udp_link_probe.h"
#include "tests/support/eventually.h"

class UdpLink : public testing::Test {
 protected:
  // Longer than anything takes that is not broken.
  static constexpr int kDeadlineMs = 5000;

  int Open() {
    return link.Open(controller.Address().c_str(), simulator::ScriptedController::kPort);
  }
  void Connect(int timeOutMs = kDeadlineMs) {
    ASSERT_EQ(link.SetTimeOut(timeOutMs), 1);
    ASSERT_EQ(Open(), 1);
  }

  std::string Query(const std::string& command) {
    const CString reply = link.Query(command.c_str());
    return std::string(reply.GetString(), static_cast<size_t>(reply.GetLength()));
  }
  /// An exchange whose answer lies there only when the link has given up.
  void QueryAnsweredLate(const std::string& command, const std::string& answer) {
    patience.End();
    ASSERT_EQ(Query(command), "");
    patience.Restore();
    ASSERT_TRUE(controller.WaitFor(command, kDeadlineMs));
    ASSERT_TRUE(controller.SendToLastSender(answer));
  }
  std::vector<std::string> Records() { return RecordTexts(link); }
  /// When each exchange with a record began.
  std::vector<int32_t> Times() {
    std::vector<int32_t> times;
    for (const TimeOutErrorW& error : RecordsOf(link)) times.push_back(error.nClock);
    return times;
  }

  /// From now on time passes only as the test says.
  void SetTheClock() {
    faults.processClockMs = [this] { return nowMs; };
  }
  /// From now on the link's own time-out and the system's clock count.
  void LetTimePass() {
    faults.processClockMs = nullptr;
    faults.wait = nullptr;
  }
  /// Every exchange takes this long by the clock, and no time really.
  void EveryExchangeTakes(int durationMs) {
    SetTheClock();
    faults.wait = [this, durationMs](platform::SocketHandle socket,
                                     const platform::WaitTime& timeOut) {
      nowMs += durationMs;
      return platform::WaitReadable(socket, timeOut);
    };
  }

  simulator::ScriptedController controller;
  PlatformFaults faults;  // after the controller, whose sockets are none of its business
  Patience patience{faults};
  int32_t nowMs = 1000;
  CUdpLink link;
  UdpLinkProbe probe{link};
};
