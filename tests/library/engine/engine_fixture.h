// SPDX-License-Identifier: MIT
// An engine, a controller to talk to, and a user who answers the message boxes.
#pragma once

#include <gmock/gmock.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <future>
#include <string>
#include <vector>

#include "library/engine/telescope.h"
#include "simulator/scripted_controller.h"
#include "tests/library/engine/platform_wraps.h"
#include "tests/library/engine/recording_app.h"
#include "tests/library/engine/telescope_probe.h"
#include "tests/support/eventually.h"
#include "tests/support/temp_folder.h"

class EngineTest : public testing::Test {
 protected:
  static constexpr std::chrono::seconds kSoon{10};  // a deadline, not a wait
  static constexpr int kSoonMs = 10'000;

  // Short cycles, as most tests wait for one; those about the rhythm itself set it back.
  static constexpr int kPeriodMs = 10;

  // A loopback address where no controller of a test ever listens.
  static constexpr const char* kNobody = "127.13.1.1";

  /// @return a host's window as the engine gets it; it is none that the system knows.
  static HWND Window(uintptr_t number) { return reinterpret_cast<HWND>(number); }

  EngineTest() {
    controller.LooksLikeAMount();
    rhythm.SetPeriod(kPeriodMs);
    const char separator = static_cast<char>(std::filesystem::path::preferred_separator);
    telescope.SetLogPath((folder.Narrow() + separator).c_str());
  }
  ~EngineTest() override {
    app.Answer();
    telescope.End();
  }

  int Connect() { return telescope.Start(nullptr, controller.Address().c_str()); }
  /// Connects, lets the first status come in and forgets what was sent for that.
  void StartSession() {
    ASSERT_EQ(Connect(), 1);
    ASSERT_TRUE(controller.WaitFor("$MTSTA?", kSoonMs));
    ASSERT_TRUE(PollsAgain());
    controller.Clear();
  }
  /// Makes a call on a thread of its own. @return its result, later
  [[nodiscard]] static std::future<int> Meanwhile(std::function<int()> call);
  /// Waits until the worker has done all that was queued.
  bool Idle() {
    return Eventually([this] { return probe.IsIdle(); }, kSoon);
  }
  /// Waits for a poll that began after this call, and for the cycle before it to be over.
  bool PollsAgain() {
    return controller.WaitForCount("$MTSTA?", controller.CountOf("$MTSTA?") + 2, kSoonMs);
  }
  /// What the engine sent, without the polls.
  std::vector<std::string> Requests() {
    std::vector<std::string> requests;
    for (const std::string& command : controller.Commands()) {
      if (command != "$MTSTA?") requests.push_back(command);
    }
    return requests;
  }
  /// The texts of the message boxes so far.
  std::vector<std::string> BoxTexts() {
    std::vector<std::string> texts;
    for (const ShownBox& box : app.Boxes()) texts.push_back(box.text);
    return texts;
  }

  TempFolder folder;  // the journals land here
  PlatformWraps platformCalls;
  RecordingApp app;
  simulator::ScriptedController controller;
  CTelescope telescope;
  TelescopeProbe probe{telescope};
  ThreadCtrlProbe rhythm{telescope};
};
