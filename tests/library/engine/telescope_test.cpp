// SPDX-License-Identifier: MIT
// The engine as it is made, its stored texts, and its window.
#include <future>
#include <thread>

#include "tests/library/engine/engine_fixture.h"

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Telescope : public EngineTest {};

TEST_F(Telescope, KnowsNothingAtFirst) {
  double radec[2] = {7.0, 7.0};
  EXPECT_EQ(telescope.GetPos(radec), 0);
  EXPECT_THAT(radec, ElementsAre(-1.0, -1.0));
  EXPECT_EQ(telescope.GetParking(), 0);
  EXPECT_EQ(telescope.GetEastWest(), 0);
  EXPECT_EQ(telescope.GetBusy(), 0);
  EXPECT_EQ(telescope.GetConnected(), 0);
  EXPECT_EQ(telescope.GetSlewing(), 0);
  EXPECT_EQ(telescope.GetTargetValid(), 0);
  EXPECT_EQ(telescope.GetStatus(), 1);
  EXPECT_EQ(telescope.GetSlewSpeedMax(), 9);
  EXPECT_EQ(probe.HandSpeed(), 0);
  EXPECT_THAT(probe.Rates(), ElementsAre(1.0, 1.0, 1.0, 1.0));
  EXPECT_THAT(probe.PulseLengths(), ElementsAre(0, 0, 0, 0));
  EXPECT_EQ(probe.FailedPolls(), 0);
  EXPECT_THAT(probe.Queue(), IsEmpty());
}

TEST_F(Telescope, CountsANegativeRightAscensionAsNone) {
  controller.Status("60000.5,1,0,0,0,45.0,10,20,-0.5,22.5,4");
  StartSession();
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 0);
  EXPECT_THAT(radec, ElementsAre(-7.5, 22.5));
}

TEST_F(Telescope, CountsARightAscensionOfZeroAsAPosition) {
  controller.Status("60000.5,1,0,0,0,45.0,10,20,0.0,-90.0,4");
  StartSession();
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 1);
  EXPECT_THAT(radec, ElementsAre(0.0, -90.0));
}

TEST_F(Telescope, GoesBackToItsFirstStateWhenReset) {
  StartSession();
  const double target[2] = {1.0, 2.0};
  telescope.SetPos(target);
  telescope.SetEastWest(1);
  telescope.SetName("Scope");
  telescope.SetVendor("Vendor");
  telescope.End();
  telescope.Slew(TELESCOPE_NORTH, 1, 7);
  telescope.SetGuideSpeed(0.25, 0.5);
  telescope.SlewPulseDuration(10, 20, 30, 40, 0.75, 0.125);
  for (int failed = 0; failed < 11; ++failed) telescope.OnPoll();  // there is no link
  ASSERT_EQ(probe.HandSpeed(), 7);
  ASSERT_THAT(probe.Rates(), ElementsAre(0.25, 0.5, 0.75, 0.125));
  ASSERT_THAT(probe.PulseLengths(), ElementsAre(10, 20, 30, 40));
  ASSERT_EQ(probe.FailedPolls(), 11);
  telescope.OnReset();
  double radec[2] = {};
  EXPECT_EQ(telescope.GetPos(radec), 0);
  EXPECT_THAT(radec, ElementsAre(-1.0, -1.0));
  EXPECT_EQ(telescope.GetBusy(), 0);
  EXPECT_EQ(telescope.GetParking(), 0);
  EXPECT_EQ(telescope.GetTargetValid(), 0);
  EXPECT_EQ(probe.StoredEastWest(), 0);
  EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 0));
  EXPECT_EQ(probe.HandSpeed(), 0);
  EXPECT_THAT(probe.Rates(), ElementsAre(1.0, 1.0, 1.0, 1.0));
  EXPECT_THAT(probe.PulseLengths(), ElementsAre(0, 0, 0, 0));
  EXPECT_EQ(probe.FailedPolls(), 0);
  EXPECT_THAT(probe.Queue(), IsEmpty());
  EXPECT_EQ(probe.Name(), "");
  EXPECT_EQ(probe.Vendor(), "");
}

TEST_F(Telescope, ForgetsEachDirectionOfAHandMoveWhenReset) {
  struct {
    int32_t direction;
    std::vector<int32_t> flags;  // north, south, east, west
  } const pushes[] = {{TELESCOPE_NORTH, {1, 0, 0, 0}},
                      {TELESCOPE_SOUTH, {0, 1, 0, 0}},
                      {TELESCOPE_EAST, {0, 0, 1, 0}},
                      {TELESCOPE_WEST, {0, 0, 0, 1}}};
  for (const auto& push : pushes) {
    telescope.Slew(push.direction, 1, 7);
    ASSERT_EQ(probe.HandFlags(), push.flags);
    telescope.OnReset();
    EXPECT_THAT(probe.HandFlags(), ElementsAre(0, 0, 0, 0)) << push.direction;
  }
}

TEST_F(Telescope, ForgetsTheSessionAndWhatItsPollsSaidWhenReset) {
  // Without a worker, whose next poll would say it all again.
  controller.Status("60000.5,2,0,0,0,45.0,10,20,6.0,22.5,4");
  ASSERT_EQ(telescope.Check(nullptr, controller.Address().c_str(), nullptr, 0, nullptr), 1);
  ASSERT_EQ(probe.Connect(), 1);
  telescope.OnPoll();
  ASSERT_EQ(telescope.GetSlewing(), 1);
  ASSERT_EQ(telescope.GetParking(), 1);
  ASSERT_EQ(telescope.GetConnected(), 1);
  telescope.OnReset();
  EXPECT_EQ(telescope.GetSlewing(), 0);
  EXPECT_EQ(telescope.GetParking(), 0);
  EXPECT_EQ(telescope.GetConnected(), 0);
}

TEST_F(Telescope, StoresTextsAndCopiesThem) {
  char text[] = "first";
  EXPECT_EQ(telescope.SetVendor(text), 1);
  EXPECT_EQ(telescope.SetName(text), 1);
  EXPECT_EQ(telescope.SetLogPath(text), 1);
  EXPECT_EQ(telescope.SetLogPrefix(text), 1);
  EXPECT_EQ(telescope.SetIni(text, text), 1);
  text[0] = 'F';
  EXPECT_EQ(probe.Vendor(), "first");
  EXPECT_EQ(probe.Name(), "first");
}

// The worker replaces them under the lock, so a copy that is made outside may be torn.
TEST_F(Telescope, CopiesItsTextsUnderTheLock) {
  CString (CTelescope::* const getters[])() = {
      &CTelescope::GetVersionText, &CTelescope::GetSpareText1, &CTelescope::GetSpareText2,
      &CTelescope::GetSpareText3,  &CTelescope::GetDateText,   &CTelescope::GetTimeText,
      &CTelescope::GetZoneText,    &CTelescope::GetBlankText,  &CTelescope::GetSiteTextA,
      &CTelescope::GetSiteTextB};
  const auto* lock = platformCalls.LockEnteredBy([this] { telescope.GetStatus(); });
  ASSERT_NE(lock, nullptr);
  for (const auto getter : getters) {
    probe.StoreTexts("before");
    // Whoever holds the lock goes first, so the caller finds what that one stores.
    platformCalls.BeforeALockIsEntered(lock, [this] { probe.StoreTexts("meanwhile"); });
    EXPECT_STREQ((telescope.*getter)(), "meanwhile");
  }
}

TEST_F(Telescope, TakesNullForAnEmptyText) {
  telescope.SetVendor("Vendor");
  EXPECT_EQ(telescope.SetVendor(nullptr), 1);
  EXPECT_EQ(probe.Vendor(), "");
  EXPECT_EQ(telescope.SetIni(nullptr, nullptr), 1);
  EXPECT_EQ(Connect(), 1);
  EXPECT_TRUE(controller.Saw("$MTCOM=0.000000,3.000000"));
}

// --- Window ------------------------------------------------------------------------------------

// What happened to the windows that the engine asked for.
struct WindowNotes {
  std::vector<std::string> events;
  CTelescope* engine = nullptr;
  HWND owner = nullptr;
  std::vector<int> queueAtTheEnd;
  bool hadWorkerAtTheEnd = false;
  bool lockWasHeldAtTheEnd = false;
  PlatformWraps* platformCalls = nullptr;
  int locksDestroyedBefore = 0;
  bool refuse = false;
} notes;

class NotingWindow : public IControllerWindow {
 public:
  ~NotingWindow() override {
    notes.events.push_back("delete");
    notes.hadWorkerAtTheEnd = ThreadCtrlProbe(*notes.engine).HasThread();
    notes.queueAtTheEnd = TelescopeProbe(*notes.engine).Queue();
    notes.locksDestroyedBefore = notes.platformCalls->LocksDestroyed();
    // Another thread gets the engine's lock only when this one does not hold it.
    auto other = std::make_shared<std::promise<void>>();
    std::future<void> entered = other->get_future();
    std::thread([engine = notes.engine, other] {
      engine->GetStatus();
      other->set_value();
    }).detach();
    using namespace std::chrono_literals;
    notes.lockWasHeldAtTheEnd = entered.wait_for(200ms) == std::future_status::timeout;
  }
};

IControllerWindow* OpenNotingWindow(CTelescope& engine, const CString& vendor, const CString& name,
                                    HWND owner) {
  notes.events.push_back(std::string("new ") + vendor.GetString() + " " + name.GetString());
  notes.engine = &engine;
  notes.owner = owner;
  return notes.refuse ? nullptr : new NotingWindow;
}

class ControllerWindow : public Telescope {
 protected:
  ControllerWindow() {
    notes = {};
    notes.platformCalls = &platformCalls;
    telescope.SetVendor("Vendor");
    telescope.SetName("Name");
    telescope.SetControllerWindowFactory(&OpenNotingWindow);
  }
  ~ControllerWindow() override { telescope.ShowController(false); }
};

TEST_F(ControllerWindow, OpensWithTheHostsTextsAndOwner) {
  telescope.AttachOwner(reinterpret_cast<HWND>(0x40));
  EXPECT_EQ(telescope.ShowController(true), 1);
  EXPECT_THAT(notes.events, ElementsAre("new Vendor Name"));
  EXPECT_EQ(notes.engine, &telescope);
  EXPECT_EQ(notes.owner, reinterpret_cast<HWND>(0x40));
}

TEST_F(ControllerWindow, OpensWithoutAnOwner) {
  telescope.ShowController(true);
  EXPECT_EQ(notes.owner, nullptr);
}

TEST_F(ControllerWindow, ClosesAnOpenOneBeforeItOpensTheNext) {
  telescope.ShowController(true);
  telescope.SetName("Other");
  EXPECT_EQ(telescope.ShowController(true), 1);
  EXPECT_THAT(notes.events, ElementsAre("new Vendor Name", "delete", "new Vendor Other"));
}

TEST_F(ControllerWindow, ClosesOnce) {
  telescope.ShowController(true);
  EXPECT_EQ(telescope.ShowController(false), 1);
  EXPECT_EQ(telescope.ShowController(false), 1);
  EXPECT_THAT(notes.events, ElementsAre("new Vendor Name", "delete"));
}

TEST_F(ControllerWindow, MayFailToOpen) {
  notes.refuse = true;
  EXPECT_EQ(telescope.ShowController(true), 1);
  EXPECT_EQ(telescope.ShowController(false), 1);
  EXPECT_THAT(notes.events, ElementsAre("new Vendor Name"));
}

TEST_F(ControllerWindow, IsNotOpenedWithoutAFactory) {
  telescope.SetControllerWindowFactory(nullptr);
  EXPECT_EQ(telescope.ShowController(true), 1);
  EXPECT_EQ(telescope.ShowController(false), 1);
  EXPECT_THAT(notes.events, IsEmpty());
}

TEST_F(ControllerWindow, ClosesAtTheEndOfTheSessionBeforeTheWorkerIsWaitedForAndUnderTheLock) {
  StartSession();
  telescope.ShowController(true);
  telescope.End();
  EXPECT_THAT(notes.events, ElementsAre("new Vendor Name", "delete"));
  EXPECT_TRUE(notes.hadWorkerAtTheEnd);
  EXPECT_TRUE(notes.lockWasHeldAtTheEnd);
  EXPECT_THAT(notes.queueAtTheEnd, ElementsAre(kCommandClose));
}

TEST_F(ControllerWindow, ClosesWithTheEngine) {
  {
    CTelescope other;
    other.SetControllerWindowFactory(&OpenNotingWindow);
    other.ShowController(true);
  }
  EXPECT_THAT(notes.events, ElementsAre("new  ", "delete"));
}

// A window that goes may still ask the engine for anything, so nothing of the engine goes first.
TEST_F(ControllerWindow, ClosesBeforeAnyPartOfTheEngineGoes) {
  {
    CTelescope other;
    other.SetControllerWindowFactory(&OpenNotingWindow);
    other.ShowController(true);
  }
  ASSERT_THAT(notes.events, ElementsAre("new  ", "delete"));
  EXPECT_EQ(notes.locksDestroyedBefore, 0);
  EXPECT_GT(platformCalls.LocksDestroyed(), 0);
}

}  // namespace
