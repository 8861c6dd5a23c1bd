// SPDX-License-Identifier: MIT
// Loading the built library on a system that refuses to start the sockets. What is refused happens
// before a host can get hold of the library, so a copy of the file is loaded in which one name is
// changed: that of the socket library, for which nosock.dll stands in.
#include <windows.h>

#include <future>
#include <optional>

#include "simulator/scripted_controller.h"
#include "tests/library/dll/message_boxes.h"
#include "tests/support/driver_library.h"
#include "tests/support/eventually.h"
#include "tests/support/file_text.h"
#include "tests/support/temp_folder.h"

namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

/// @return the file's bytes with the name of the socket library changed; empty when that is not in
/// it exactly once.
std::string BytesWithTheStandIn(const std::filesystem::path& library) {
  const std::string name("WS2_32.dll", 11);  // with its NUL
  const std::string standIn("nosock.dll", 11);
  std::string bytes = ReadWholeFile(library).value_or("");
  const size_t at = bytes.find(name);
  if (at == std::string::npos || bytes.find(name, at + 1) != std::string::npos) return "";
  return bytes.replace(at, name.size(), standIn);
}

/// @return what the user reads on the system that this runs on; there is a program for either.
const wchar_t* SocketsFailedText() {
  return GetACP() == 932 ? L"Windows ソケットの初期化に失敗しました。"
                         : L"Windows Sockets could not be started.";
}

class SocketlessLoad : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_NE(standIn, nullptr);
    ASSERT_FALSE(DriverLibrary::IsLoaded());
    wchar_t program[MAX_PATH] = L"";
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const auto original = std::filesystem::path(program).parent_path() / L"velquin.dll";
    const std::string bytes = BytesWithTheStandIn(original);
    ASSERT_FALSE(bytes.empty());
    WriteWholeFile(copy, bytes);
  }
  ~SocketlessLoad() override {
    if (standIn != nullptr) FreeLibrary(standIn);
  }

  template <typename Function>
  Function Find(const char* name) const {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(standIn, name)));
  }
  HMODULE Load() { return LoadLibraryW(copy.c_str()); }
  /// Somebody who answers the next box. On return the thread is at work, as a load that shows a box
  /// lets no thread begin.
  std::future<std::optional<MessageBoxOnScreen>> AnswerABoxMeanwhile() {
    std::promise<void> begun;
    std::future<void> atWork = begun.get_future();
    auto answered = std::async(std::launch::async, [begun = std::move(begun)]() mutable {
      FindMessageBox();
      begun.set_value();
      const auto box = WaitForMessageBox(10s);
      if (box) PressOk(*box);
      return box;
    });
    atWork.wait();
    return answered;
  }

  const TempFolder folder;
  const std::filesystem::path copy = folder / L"velquin.dll";
  const HMODULE standIn = LoadLibraryW(L"nosock.dll");
  void (*const refuseStarts)(unsigned) = Find<void (*)(unsigned)>("RefuseStarts");
  int (*const startsAsked)() = Find<int (*)()>("StartsAsked");
};

TEST_F(SocketlessLoad, FailsAfterAMessageAndLeavesNothing) {
  refuseStarts(~0u);
  auto answered = AnswerABoxMeanwhile();
  SetLastError(0);
  const HMODULE module = Load();
  const DWORD error = GetLastError();
  const auto box = answered.get();
  EXPECT_EQ(module, nullptr);
  EXPECT_EQ(error, static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
  EXPECT_FALSE(DriverLibrary::IsLoaded());
  EXPECT_EQ(startsAsked(), 2) << "of the link, then of the library";
  ASSERT_TRUE(box);
  EXPECT_EQ(box->title, L"VELQUIN");
  EXPECT_EQ(box->text, SocketsFailedText());
  EXPECT_THAT(box->buttons, ElementsAre(L"OK"));
  EXPECT_FALSE(FindMessageBox());

  refuseStarts(0);
  ASSERT_NE(Load(), nullptr) << "once the sockets start, so does the library";
  {
    const DriverLibrary driver;
    EXPECT_EQ(driver.GetStatus(nullptr), 1);
    FreeLibrary(GetModuleHandleW(L"velquin.dll"));
  }
  EXPECT_FALSE(DriverLibrary::IsLoaded());
}

// Only the library's own start decides.
TEST_F(SocketlessLoad, SucceedsWhenOnlyTheLinksOwnStartIsRefused) {
  simulator::ScriptedController controller;
  controller.LooksLikeAMount();
  refuseStarts(1);
  const HMODULE module = Load();
  ASSERT_NE(module, nullptr);
  EXPECT_EQ(startsAsked(), 2);
  {
    const DriverLibrary driver;
    EXPECT_EQ(AnswerBoxesDuring(
                  [&] { return driver.Start(nullptr, controller.Address().c_str(), nullptr, 0); }),
              1);
    double radec[2] = {};
    EXPECT_TRUE(Eventually([&] { return driver.GetPos(nullptr, radec) == 1; }, 10s));
    EXPECT_EQ(driver.End(nullptr), 1);
    FreeLibrary(module);
  }
  EXPECT_FALSE(DriverLibrary::IsLoaded());
}

}  // namespace
