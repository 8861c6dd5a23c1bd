// SPDX-License-Identifier: MIT
// CTelescope: the driver's one engine.
//
// The life of a request: an export stores its parameters and a TelescopeCommand under the lock and
// returns. The worker takes the code out of the queue, copies the parameters under the lock,
// releases the lock and talks to the controller through CVQCtrlW. Then it polls the status and
// publishes it under the lock. The exports and the hand controller read it there.
//
// One object for the life of the library. Any thread may call the public operations. Only the
// worker uses the link to the controller while it runs; before and after that, Start and Check use
// it, one at a time (sessionLock). No other lock is held during an exchange. End writes the journal
// of failed exchanges while the worker still runs; the list of the journal has its own lock.
#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <memory>

#include "core/protocol/vq_ctrl_w.h"
#include "framework/base/array.h"
#include "framework/base/cstring.h"
#include "include/telescope_api.h"
#include "library/engine/controller_window.h"
#include "library/engine/telescope_command.h"
#include "library/engine/thread_ctrl.h"

class CTelescope : public CThreadCtrl {
 public:
  CTelescope();
  /// Call End first; otherwise the destructor waits for the running worker.
  ~CTelescope() override;

  // --- Session (host's thread; blocks) ---------------------------------------------------------

  /// Connects and starts the worker. While a session runs, or is being started or ended, it returns
  /// 0 at once and changes nothing. @return 1 when the session runs.
  int Start(HWND ownerWindow, const char* newAddress);
  /// Asks a controller's version without a session. While a session runs, or is being started or
  /// ended, it answers at once from the session's version text and changes neither link nor address
  /// nor owner.
  /// @param version receives the text, cut to versionSize - 1 characters; may be null
  /// @param extra its first byte becomes 0; may be null. Both are unchanged on failure.
  /// @return 1 when there is a version that is not empty.
  int Check(HWND ownerWindow, const char* newAddress, char* version, size_t versionSize,
            char* extra);
  /// Writes the time-out journal, queues the close and waits for the worker. @return 1.
  int End();
  /// @return false while a worker runs or a host's thread is inside Start, Check or End.
  bool IsIdle() const { return hostCalls == 0 && thread == nullptr; }

  // --- Requests (any thread; all return 1 at once) ----------------------------------------------

  int Look(const double* radec);  ///< degrees; null repeats the stored target
  int Sync(const double* radec);  ///< degrees; null uses the stored target
  int SetPos(const double* radec);
  int Slew(int32_t direction, int32_t push, int32_t speedStep);
  int Stop();
  int Home();
  int Park();
  int UnPark();
  int SetGuideSpeed(double rateA, double rateB);
  int SlewPulseDuration(int32_t northMs, int32_t southMs, int32_t eastMs, int32_t westMs,
                        double rateA, double rateB);
  int BaseSetting(const SiteTime* time, const SiteLocation* location);
  int AlignReset();
  int SetEastWest(int32_t side);

  // --- State (any thread) ----------------------------------------------------------------------

  /// @param radec receives right ascension and declination, degrees, also when the result is 0
  /// @return 0 when more than 10 polls in a row failed or no position has been read, else 1.
  int GetPos(double* radec);
  int GetParking();   ///< the operating flag: 1 when the mount is ready to observe
  int GetStatus();    ///< 1
  int GetEastWest();  ///< -1, 1, or 0 before the first status
  int GetSlewSpeedMax() const { return 9; }
  int GetBusy();
  int GetConnected();
  int GetSlewing();
  int GetTargetValid();

  CString GetVersionText() { return Copy(&CTelescope::versionText); }
  CString GetSpareText1() { return Copy(&CTelescope::spareText1); }
  CString GetSpareText2() { return Copy(&CTelescope::spareText2); }
  CString GetSpareText3() { return Copy(&CTelescope::spareText3); }
  CString GetDateText() { return Copy(&CTelescope::dateText); }
  CString GetTimeText() { return Copy(&CTelescope::timeText); }
  CString GetZoneText() { return Copy(&CTelescope::zoneText); }
  CString GetBlankText() { return Copy(&CTelescope::blankText); }
  CString GetSiteTextA() { return Copy(&CTelescope::siteTextA); }
  CString GetSiteTextB() { return Copy(&CTelescope::siteTextB); }

  // --- Texts of the host (any thread; return 1) ------------------------------------------------

  int SetVendor(const char* text) { return Store(&CTelescope::vendor, text); }
  int SetName(const char* text) { return Store(&CTelescope::name, text); }
  int SetLogPath(const char* text) { return Store(&CTelescope::logPath, text); }
  int SetLogPrefix(const char* text) { return Store(&CTelescope::logPrefix, text); }
  int SetIni(const char* file, const char* section);

  // --- Window ----------------------------------------------------------------------------------

  /// Sets the function that opens the hand-controller window. Null, the default: no window opens.
  void SetControllerWindowFactory(ControllerWindowFactory factory) { windowFactory = factory; }
  /// Opens the window again, on the calling thread, or closes it, on any thread.
  /// @return 1.
  int ShowController(bool show);

  // --- Hooks of the worker ---------------------------------------------------------------------

  void OnReset() override;
  int OnPoll() override;
  int OnProcess() override;
  int OnStart() override REQUIRES(sessionLock);
  int OnEnd() override;

 private:
  friend class TelescopeProbe;  // the tests' view of queue and flags

  struct HandMoveFlags {
    int32_t north, south, east, west;
  };

  void Enqueue(int32_t code) REQUIRES(lock);
  int EnqueueAlone(int32_t code);
  int32_t TakeCommand(bool& last);
  void Perform(int32_t code);

  bool BeginSession();
  void MarkSession(bool active);
  bool InSession(CString& version);
  void StoreSessionVersion(const CString& version);
  void UndoStart();
  int Probe(char* version, size_t versionSize, char* extra) REQUIRES(sessionLock);
  int Handshake(CString& version);
  void WriteJournal();

  void StoreTarget(const double* radec) REQUIRES(lock);
  bool CopyTarget(double* radec);
  void PerformGoto();
  void PerformSync();
  void PerformStop();
  void PerformHandMove();
  void PerformGuideSpeed();
  void PerformGuidePulses();

  void ApplyMeridianOverrides();
  double ReadIniNumber(const char* key, const char* fallback);
  void SendSiteAndClock();
  bool ClocksDiffer();
  void SendSite();
  void SendClock();
  void ReadSiteAndClock();

  void ReplaceController(std::unique_ptr<IControllerWindow> window);
  CString Copy(CString CTelescope::* text);
  int Store(CString CTelescope::* text, const char* value);
  int Read(int32_t CTelescope::* flag);

  CVQCtrlW device;
  CString address GUARDED_BY(sessionLock);  // changed by Start and Check, while no session runs
  double position[2] GUARDED_BY(lock) = {-1.0, -1.0};  // degrees; last one read
  double target[2] GUARDED_BY(lock) = {0.0, 0.0};      // degrees; for goto and sync
  std::atomic<int32_t> PollFailCount = 0;              // failed polls in a row
  CArray<int, int> CommandQueue GUARDED_BY(lock);      // pending TelescopeCommand, oldest first
  SiteTime siteTime GUARDED_BY(lock) = {};
  SiteLocation siteLocation GUARDED_BY(lock) = {};
  int32_t busy GUARDED_BY(lock) = 0;         // 1 while OnProcess runs
  int32_t connected GUARDED_BY(lock) = 0;    // from a successful start to the queued close
  int32_t slewing GUARDED_BY(lock) = 0;      // the last status said so
  int32_t operating GUARDED_BY(lock) = 0;    // the last status said: ready to observe
  int32_t eastWest GUARDED_BY(lock) = 0;     // last pier side set or asked for
  int32_t targetValid GUARDED_BY(lock) = 0;  // a target has been stored
  std::unique_ptr<IControllerWindow> controllerDialog GUARDED_BY(lock);
  int32_t handSpeed GUARDED_BY(lock) = 0;
  int32_t handEast GUARDED_BY(lock) = 0;
  int32_t handWest GUARDED_BY(lock) = 0;
  int32_t handNorth GUARDED_BY(lock) = 0;
  int32_t handSouth GUARDED_BY(lock) = 0;
  double guideRateA GUARDED_BY(lock) = 1.0;
  double guideRateB GUARDED_BY(lock) = 1.0;
  double pulseRateA GUARDED_BY(lock) = 1.0;    // east and west
  double pulseRateB GUARDED_BY(lock) = 1.0;    // north and south
  int32_t spare = 0;                           // fixed layout, never used
  int32_t pulseMs[4] GUARDED_BY(lock) = {};    // north, south, east, west
  int64_t siteTimeStamp GUARDED_BY(lock) = 0;  // seconds since 1970 at the last BaseSetting
  int32_t processFlag GUARDED_BY(lock) = 0;    // cleared in every cycle; never read
  CString versionText GUARDED_BY(lock);
  CString spareText1 GUARDED_BY(lock);
  CString spareText2 GUARDED_BY(lock);
  CString spareText3 GUARDED_BY(lock);
  CString dateText GUARDED_BY(lock);
  CString timeText GUARDED_BY(lock);
  CString zoneText GUARDED_BY(lock);
  CString blankText GUARDED_BY(lock);
  CString siteTextA GUARDED_BY(lock);  // longitude
  CString siteTextB GUARDED_BY(lock);  // latitude
  CString vendor GUARDED_BY(lock);
  CString name GUARDED_BY(lock);
  CString iniFile GUARDED_BY(lock);
  CString iniSection GUARDED_BY(lock);
  CString logPath GUARDED_BY(lock);
  CString logPrefix GUARDED_BY(lock);

  ControllerWindowFactory windowFactory = nullptr;
  bool sessionActive GUARDED_BY(lock) = false;  // from the start of Start to the end of End
  CString sessionVersion GUARDED_BY(lock);      // empty until the session's controller has answered
  CCriticalSection sessionLock;                 // one of Start, Check and End at a time
  std::atomic<int32_t> hostCalls = 0;           // threads inside Start, Check or End
};
