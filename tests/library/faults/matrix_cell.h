// SPDX-License-Identifier: MIT
// One cell of the fault matrix: a session whose network goes bad in one phase, a stop when that has
// begun (in the phases of a start, when that has succeeded; in the last one, none), the end, and a
// session after it; everything seen from the outside is then held against
// what the controller's log of the wire lets expect. Made and run once by one thread.
#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "simulator/scripted_controller.h"
#include "tests/library/faults/fault_kinds.h"
#include "tests/library/faults/host_watch.h"
#include "tests/library/faults/link_model.h"
#include "tests/library/faults/machine_delay.h"
#include "tests/support/driver_library.h"
#include "tests/support/temp_folder.h"

/// What a cell saw. Times are milliseconds; -1 for what did not take place.
struct CellResult {
  std::vector<std::string> broken;  ///< what did not hold, a line for a person each
  std::vector<std::string> late;    ///< the same of what has to hold within a time
  double machineDelayMs = 0.0;      ///< the longest one meanwhile
  double narrowMs = 0.0;            ///< how near to the end of the driver's patience a reply came
  double callMs = 0.0;              ///< the longest of all calls that have to return at once
  double checkMs = -1.0;
  double startMs = -1.0;  ///< without the time from a message box to its answer
  double stopMs = -1.0;   ///< from the call to the wire
  double endMs = -1.0;
  double dialogMs = -1.0;  ///< to open the hand controller
  std::string record;      ///< of the wire, a line for each datagram
  int exchanges = 0;
  int failures = 0;          ///< lines in the journal
  bool stopKept = false;     ///< the link was closed before the stop could be sent
  bool queueCut = false;     ///< the same for a command that was queued before the end
  bool failedStart = false;  ///< so that there was nothing to stop
  int oddPositions = 0;      ///< polled from a line that is not a whole one of the controller's
};

class MatrixCell {
 public:
  MatrixCell(FaultKind kind, Phase phase, uint64_t seed);
  ~MatrixCell();
  CellResult Run();

 private:
  /// Of order, journal and positions, which must hold on a busy machine as well.
  void Expect(bool holds, const std::string& what);
  /// Of a time.
  void ExpectInTime(bool holds, const std::string& what);
  /// @param limitMs for the driver; the machine's delay comes on top
  /// @param waits   what the driver waits for meanwhile; the delay is added once for each
  void ExpectWithin(double tookMs, double limitMs, const char* what, int waits = 1);
  double NowMs() const { return controller_.WireNowMs(); }
  /// @return from when on a command that the controller got was sent after that moment: before, it
  ///         may have been sent earlier and have waited for the machine.
  double SurelyAfter(double ms) const { return ms + machine_.LongestMs(); }
  LinkHistory History() const { return WhatTheLinkMade(controller_.WireLog()); }
  /// Whether an empty datagram has closed the link, so that nothing is sent anymore.
  bool LinkIsClosed() const { return kind_ == FaultKind::kEmpty && History().closed; }
  simulator::FaultChooser Faults() const { return PhaseFaults(kind_, phase_, seed_); }
  /// Runs a call that may hang, and ends the program when it does. @return its duration
  double Timed(const std::function<void()>& call, const char* name);

  void Begin();
  void CheckController();
  void StartSession();
  void SetJournal(const char* prefix);
  void CallDuringTheSession();
  void MakeTheRequest();
  /// @return what shows on the wire that the phase has begun; empty in a start
  std::string RequestCommand() const;
  void WaitForThePhase();
  void QueueSix();
  void Stop();
  void End();
  void ExpectQueueWorkedOff();
  void RunAnotherSession();

  void ExpectStopInTime(const LinkHistory& history);
  void ExpectShortPausesBefore(const LinkHistory& history, const ModelExchange& stop);
  void ExpectPositionsFromReplies(const LinkHistory& history);
  void ExpectJournals(const LinkHistory& history);
  std::vector<std::filesystem::path> JournalFiles(const std::string& prefix) const;
  std::vector<JournalEntry> Journal(const std::string& prefix) const;

  const FaultKind kind_;
  const Phase phase_;
  const uint64_t seed_;
  TempFolder folder_;
  simulator::ScriptedController controller_;
  std::vector<std::string> statuses_;
  DriverLibrary driver_;
  MachineDelay machine_;
  HostWatch watch_;
  CellResult result_;
  bool started_ = false;
  int sentBefore_ = 0;      // the request's command, before the network went bad
  double queuedMs_ = -1.0;  // before the first of the six commands
  double stopCalledMs_ = -1.0;
  double endCalledMs_ = -1.0;
};
