// SPDX-License-Identifier: MIT
// Load and unload. What happens at the end of a process is seen in a process of its own.
#include "library/api/module_frame.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <future>
#include <memory>

#include "framework/base/win_app.h"
#include "include/telescope_api.h"
#include "library/ui/shared_brushes.h"
#include "simulator/scripted_controller.h"
#include "tests/library/api/system_wraps.h"
#include "tests/library/dll/message_boxes.h"

namespace {

using namespace std::chrono_literals;
using testing::ExitedWithCode;

TEST(ModuleFrame, BuildsTheEngineBeforeTheApplicationObject) {
  EXPECT_FALSE(system_wraps::HadAppAtFirst());
  EXPECT_NE(AfxGetApp(), nullptr);
}

TEST(ModuleFrame, MakesTheLibraryReady) {
  ASSERT_TRUE(ModuleAttached());
  EXPECT_STREQ(AfxGetApp()->AppName(), "VELQUIN");
  EXPECT_NE(GetSharedBrushes().dark, nullptr);
  EXPECT_EQ(TelescopeGetStatus(nullptr), 1);
  AfxGetApp()->ExitInstance();
}

TEST(ModuleFrame, LetsTheLoadFailWithoutSockets) {
  const system_wraps::NoSockets broken;
  auto attached = std::async(std::launch::async, [] { return ModuleAttached(); });
  const auto box = WaitForMessageBox(10s);
  ASSERT_TRUE(box);
  EXPECT_EQ(box->title, L"VELQUIN");
  EXPECT_EQ(box->text, L"Windows ソケットの初期化に失敗しました。");
  EXPECT_TRUE(PressOk(*box));
  EXPECT_FALSE(attached.get());
}

// Exit codes of the processes below.
constexpr int kDone = 0;
constexpr int kWrong = 3;
constexpr int kNotBegun = 4;

TEST(ModuleFrameDeathTest, DestroysTheApplicationObjectBeforeTheEngine) {
  const auto unload = [] {
    if (!ModuleAttached()) std::exit(kNotBegun);
    ModuleDetaching(false);
    system_wraps::EndWhenAppOutlivesTheEngine(kWrong);
    std::exit(kDone);
  };
  EXPECT_EXIT(unload(), ExitedWithCode(kDone), "");
}

TEST(ModuleFrameDeathTest, DestroysTheEngineAtUnload) {
  const auto unload = [] {
    if (!ModuleAttached()) std::exit(kNotBegun);
    ModuleDetaching(false);
    system_wraps::EndWhenTheEngineGoes(kWrong);
    std::exit(kDone);
  };
  EXPECT_EXIT(unload(), ExitedWithCode(kWrong), "");
}

TEST(ModuleFrameDeathTest, GivesTheSocketsBackAtUnload) {
  const auto unload = [] {
    if (!ModuleAttached()) std::exit(kNotBegun);
    const int users = system_wraps::SocketUsers();
    ModuleDetaching(false);
    std::exit(system_wraps::SocketUsers() == users - 1 && !GetSharedBrushes().dark ? kDone
                                                                                   : kWrong);
  };
  EXPECT_EXIT(unload(), ExitedWithCode(kDone), "");
}

TEST(ModuleFrameDeathTest, LeavesEverythingAloneWhenAProcessEndsDuringASession) {
  const auto leave = [] {
    if (!ModuleAttached()) std::exit(kNotBegun);
    auto controller = std::make_unique<simulator::ScriptedController>();
    controller->LooksLikeAMount();
    if (TelescopeStart(nullptr, controller->Address().c_str(), nullptr, 0) != 1) {
      controller.reset();
      std::exit(kNotBegun);
    }
    const int users = system_wraps::SocketUsers();
    ModuleDetaching(true);
    // Neither sockets nor brushes were touched, and the worker, which this process did not stop,
    // still has all that it needs.
    const bool same = system_wraps::SocketUsers() == users && GetSharedBrushes().dark != nullptr;
    // Wine's server may keep a socket when its process ends with a thread in `select`, as long as
    // it lives itself, and the port of this one is every controller's.
    controller.reset();
    system_wraps::EndWhenTheEngineGoes(kWrong);
    std::exit(same ? kDone : kWrong);
  };
  EXPECT_EXIT(leave(), ExitedWithCode(kDone), "");
}

}  // namespace
