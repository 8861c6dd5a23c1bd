// SPDX-License-Identifier: MIT
// Worker: the only thread that talks to a controller. It takes requests from the inbox, makes one
// exchange after the other, keeps the state of the mount, and announces it. Owned by Mount; all
// members belong to the thread that calls Run.
//
// Order of work: first orders about the connection, then stops, then moves and the clock when they
// are due, then an overdue status and requests in turn, then the next status.
#pragma once

#include <array>
#include <memory>
#include <mutex>
#include <optional>
#include <string>

#include "gateways/mount/announcer.h"
#include "gateways/mount/arrival_judge.h"
#include "gateways/mount/backoff.h"
#include "gateways/mount/clock_plan.h"
#include "gateways/mount/controller_link.h"
#include "gateways/mount/inbox.h"
#include "gateways/mount/link_monitor.h"
#include "gateways/mount/motion_plan.h"
#include "gateways/mount/name_lookup.h"

namespace velquin {

class Worker {
 public:
  /// @param journal outlives the worker
  Worker(const MountOptions& options, std::shared_ptr<Inbox> inbox,
         std::shared_ptr<Announcer> announcer, ExchangeJournal& journal);

  /// Returns after Inbox::Quit, when all tickets have ended.
  void Run();
  /// @return the controller's version text; any thread.
  std::string Version() const;

 private:
  using TicketPtr = std::shared_ptr<TicketState>;

  // --- worker.cpp: the loop ----------------------------------------------------------------------
  void Step();
  void Work();
  MonotonicTime NextDue() const;
  /// One exchange, counted.
  Answer Ask(const std::string& command, const Patience& patience = {},
             const char* otherKey = nullptr);
  /// An exchange that is repeated once if it had no usable answer, unless something urgent waits.
  Answer AskAgain(const std::string& command, int tries = 2, const char* otherKey = nullptr);
  /// @return the outcome that an answer to a setting or an action means.
  Outcome OutcomeOf(const Answer& answer) const;
  void End(TicketPtr& ticket, Outcome outcome);
  void Publish();

  // --- worker_status.cpp: the mount's status -----------------------------------------------------
  /// Asks for the status. @return true if a good one arrived.
  bool Poll(const Patience& patience);
  Patience PollPatience() const;
  MonotonicTime PollDue() const;
  void TakeStatus(const MountStatus& status, MonotonicTime readAt);
  bool IsMoving() const;
  Motion CurrentMotion() const;
  void EndJourney(Outcome outcome);

  // --- worker_session.cpp: the connection --------------------------------------------------------
  void Obey(const SessionOrder& order);
  void ContinueConnecting();
  void Connect();
  ConnectFailure Identify();
  void FailToConnect(ConnectFailure failure);
  void ReadSite();
  void HandSettingsOver();
  void LoseLink();
  void TryAgain();
  void LinkIsBack(double movedDegrees, int stateBefore);
  void LookUp();
  /// Ends everything in progress.
  void EndAll(Outcome outcome);

  // --- worker_requests.cpp -----------------------------------------------------------------------
  void Perform(Request request);
  void Perform(const GotoRequest& request, TicketPtr ticket);
  void Perform(const HomeRequest& request, TicketPtr ticket);
  void Perform(const ParkRequest& request, TicketPtr ticket);
  void Perform(const UnparkRequest& request, TicketPtr ticket);
  void Perform(const SyncRequest& request, TicketPtr ticket);
  void Perform(const GuideRatesRequest& request, TicketPtr ticket);
  void Perform(const ResetAlignmentRequest& request, TicketPtr ticket);
  void Perform(const MeridianRequest& request, TicketPtr ticket);
  struct Destination {
    ArrivalJudge::Goal goal;
    SkyPoint target;
  };
  void Travel(const std::string& command, const Destination& destination, Motion motion,
              TicketPtr ticket);
  /// @return true, and the ticket has ended, if the mount is parked.
  bool RefuseWhileParked(TicketPtr& ticket);

  // --- worker_motion.cpp: moves, pulses, stops ---------------------------------------------------
  void Perform(const MoveRequest& request, TicketPtr ticket);
  void Perform(const GuideRequest& request, TicketPtr ticket);
  bool PerformMotion(MonotonicTime now);
  void SendMove(const MotionPlan::Command& command);
  void ClosePulses(const std::array<bool, kAxisCount>& ended);
  void EndPulse(size_t axis, Outcome outcome);
  void EndMoveTickets(Outcome outcome);
  void CancelMotion(Outcome outcome);
  bool HasStopToSend() const;
  void PerformStop();

  // --- worker_hand_over.cpp: site and clock ------------------------------------------------------
  void Perform(const SiteRequest& request, TicketPtr ticket);
  void Perform(const ClockRequest& request, TicketPtr ticket);
  bool PerformClock(MonotonicTime now);
  void HandSiteOver();
  void PlanClock();
  void PrepareClock();
  void HandClockOver();

  const MountOptions options_;
  const std::shared_ptr<Inbox> inbox_;
  const std::shared_ptr<Announcer> announcer_;
  ControllerLink link_;

  // The connection.
  std::string address_;
  std::unique_ptr<NameLookup> lookup_;
  MonotonicTime lookupEndsAt_;
  Backoff backoff_;
  MonotonicTime nextTry_;
  LinkMonitor monitor_;

  // The mount.
  Snapshot state_;
  MountStatus status_;  // the last one
  MonotonicTime lastPoll_;
  bool pollAtOnce_ = false;
  bool isTurnOfRequests_ = false;  // a status was read while they waited
  int abandonedPolls_ = 0;

  // An acknowledged goto, home, park or unpark.
  struct Journey {
    TicketPtr ticket;
    ArrivalJudge judge;
    Motion motion;
  };
  std::optional<Journey> journey_;

  // One call of Guide; its ticket ends when both axes are done.
  struct PulseJob {
    TicketPtr ticket;
    int axesLeft;
  };
  MotionPlan plan_;
  std::array<std::shared_ptr<PulseJob>, kAxisCount> pulses_;
  std::array<TicketPtr, kAxisCount> moves_;  // waiting for an acknowledgement
  MonotonicTime nextMove_;                   // no command before this, as the last one failed
  bool moveFailed_ = false;                  // a status must be read before the next one

  Inbox::Tickets stops_;  // waiting for an acknowledgement
  bool stopAcknowledged_ = false;
  MonotonicTime nextStop_;

  // Site and clock that wait until the mount is at rest, and for a full minute.
  struct ClockJob {
    std::chrono::nanoseconds ahead;
    TicketPtr ticket;
    int triesLeft;
    MonotonicTime due;
    std::optional<SiteTime> minute;  // sent when due; empty: prepared when due
  };
  std::optional<Site> site_;
  TicketPtr siteTicket_;
  std::optional<ClockJob> clock_;

  mutable std::mutex versionLock_;
  std::string version_;  // guarded by versionLock_
};

}  // namespace velquin
