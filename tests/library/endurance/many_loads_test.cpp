// SPDX-License-Identifier: MIT
// A host that loads the library anew for every connection, more often than a process has thread
// slots to give.
#include <windows.h>

#include <cstdio>
#include <filesystem>
#include <set>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/library/dll/driver_fixture.h"
#include "tests/library/endurance/process_figures.h"
#include "tests/support/pe_image.h"
#include "tests/support/run_length.h"

namespace {

/// Leaves a process only so many of its 1088 thread slots while the object lives.
class FewThreadSlots {
 public:
  explicit FewThreadSlots(size_t left) {
    for (DWORD slot = TlsAlloc(); slot != TLS_OUT_OF_INDEXES; slot = TlsAlloc()) {
      taken_.push_back(slot);
    }
    for (; left > 0; --left) {
      TlsFree(taken_.back());
      taken_.pop_back();
    }
  }
  ~FewThreadSlots() {
    for (const DWORD slot : taken_) TlsFree(slot);
  }

 private:
  std::vector<DWORD> taken_;
};

constexpr const char* kEmptyLibrary = "empty_library.dll";

void LoadEmptyLibrary() {
  HMODULE library = LoadLibraryA(kEmptyLibrary);
  ASSERT_NE(library, nullptr);
  FreeLibrary(library);
  ASSERT_EQ(GetModuleHandleA(kEmptyLibrary), nullptr);
}

void LoadDriver() {
  DriverLibrary library;
  ASSERT_EQ(library.GetStatus(nullptr), 1);
  library.Unload();
  ASSERT_FALSE(DriverLibrary::IsLoaded());
}

/// A library that is loaded again and again, and what its loads left behind.
struct Loads {
  const char* what;
  void (*load)();
  int64_t keptKiB = 0;  ///< committed after the loads and not before them

  void Load() {
    const int64_t before = CommittedKiB();
    load();
    keptKiB += CommittedKiB() - before;
  }
};

/// @return the libraries of the system that a library beside this program needs.
std::set<std::string> PartsOfTheSystem(const char* library) {
  wchar_t program[MAX_PATH] = L"";
  GetModuleFileNameW(nullptr, program, MAX_PATH);
  const auto image = PeImage::Read(std::filesystem::path(program).replace_filename(library));
  if (!image) throw std::runtime_error(std::string("unreadable: ") + library);
  return {image->importedModules.begin(), image->importedModules.end()};
}

// Wine 10 itself keeps 768 KiB of each load of a library that needs the common controls. The two
// take turns, so that whatever the system keeps once or late is not the one's alone.
TEST(ManyLoads, GiveBackWhatTheyTake) {
  const FewThreadSlots slots(40);
  Loads empty = {"empty library", LoadEmptyLibrary};
  Loads driver = {"driver", LoadDriver};
  constexpr int kWarmUp = 10;
  const int loads = IsFullLength() ? 1200 : 120;
  int64_t before = 0;
  for (int i = 0; i < loads && !HasFatalFailure(); ++i) {
    SCOPED_TRACE(testing::Message() << "load " << i);
    if (i == kWarmUp) {
      empty.keptKiB = driver.keptKiB = 0;
      before = CommittedKiB();
    }
    empty.Load();
    driver.Load();
  }
  std::printf("%lld KiB committed before, %lld after\n", static_cast<long long>(before),
              static_cast<long long>(CommittedKiB()));
  for (const Loads& each : {empty, driver}) {
    std::printf("%d loads of the %s keep %lld KiB\n", loads - kWarmUp, each.what,
                static_cast<long long>(each.keptKiB));
  }
  // Less than 4 KiB a load in the short version; the C++ runtime alone takes 73.
  EXPECT_NEAR(static_cast<double>(driver.keptKiB), static_cast<double>(empty.keptKiB), 400);
}

TEST(ManyLoads, AreComparedWithThoseOfALibraryThatNeedsTheSame) {
  EXPECT_EQ(PartsOfTheSystem(kEmptyLibrary), PartsOfTheSystem("velquin.dll"));
}

using Addresses = DriverTest;

// A probe that nobody answered must not tie the link to that address.
TEST_F(Addresses, AWrongOneDoesNotSpoilTheNext) {
  controller.IsSilentTo("$SYVER?");
  char version[16] = "";
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                         nullptr, 0),
            0);
  controller.LooksLikeAMount();
  EXPECT_EQ(driver.Check(nullptr, controller.Address().c_str(), nullptr, version, sizeof version,
                         nullptr, 0),
            1);
  const auto received = controller.Received();
  ASSERT_GE(received.size(), 2u);
  EXPECT_NE(received.front().fromPort, received.back().fromPort);
}

}  // namespace
