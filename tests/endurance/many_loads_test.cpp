// SPDX-License-Identifier: MIT
// A host that loads the library anew for every connection, more often than a process has thread
// slots to give.
#include <windows.h>

#include <vector>

#include "tests/dll/driver_fixture.h"
#include "tests/endurance/process_figures.h"
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

TEST(ManyLoads, GiveBackWhatTheyTake) {
  const FewThreadSlots slots(40);
  const int loads = IsFullLength() ? 1200 : 120;
  int64_t before = 0;
  for (int i = 0; i < loads; ++i) {
    if (i == 10) before = CommittedKiB();
    DriverLibrary library;
    ASSERT_EQ(library.GetStatus(nullptr), 1) << "load " << i;
    library.Unload();
    ASSERT_FALSE(DriverLibrary::IsLoaded()) << "load " << i;
  }
  // Less than 4 KiB a load in the short version; the C++ runtime alone takes 73.
  const int64_t after = CommittedKiB();
  EXPECT_LT(after - before, 400);
  std::printf("%d loads: %lld KiB committed before, %lld after\n", loads,
              static_cast<long long>(before), static_cast<long long>(after));
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
