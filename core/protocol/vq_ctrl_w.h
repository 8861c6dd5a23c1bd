// SPDX-License-Identifier: MIT
// CVQCtrlW: the session with one mount controller. It turns every mount operation into one command
// line, checks and reads the reply, and keeps the contents of the last status.
// Owned by the engine for the life of the library. One thread at a time: the engine's worker, or
// the host's thread while no worker runs. Only GetPierSide and WriteTimeOutErrors may be called
// from any thread.
//
// Every operation returns 1 for success and 0 for failure, and returns the raw reply line in
// `reply`. The line is empty if no usable reply came; the link has then recorded the reason. No
// operation retries. A position is two doubles in degrees, right ascension first, unless a comment
// says otherwise.
#pragma once

#include <atomic>
#include <cstdint>
#include <memory>

#include "core/log/logger.h"
#include "core/net/udp_link.h"
#include "framework/base/cstring.h"
#include "include/telescope_api.h"

class CVQCtrlW {
 public:
  using StringList = CArray<CString, CString&>;

  /// Opens the device log if the host has switched it on.
  CVQCtrlW();
  virtual ~CVQCtrlW();
  CVQCtrlW(const CVQCtrlW&) = delete;
  CVQCtrlW& operator=(const CVQCtrlW&) = delete;

  // --- Session ---------------------------------------------------------------------------------

  /// Opens the link and identifies the controller. Blocks for up to 0.5 s per unanswered exchange.
  /// A failure does not close the link; call Close. While the link is still connected, the old
  /// connection is used again.
  /// @param host IPv4 address or name @param port, openArg stored only; the port is always 60023
  /// @return 1 if the controller answered. If it then does not answer the second version query, the
  ///         result is still 1, with version and model unread.
  int Open(const char* host, int32_t port, int32_t openArg);
  /// Closes the link; does nothing while it is closed.
  void Close() noexcept;
  /// Asks the controller's version. @param version receives the text after "$SYVER="; unchanged on
  /// failure.
  int GetVersion(CString& version, CString& reply);
  /// Writes every failed or slow exchange since construction to the journal (time_out_journal.h).
  void WriteTimeOutErrors(const char* logFolder, const char* logPrefix);

  // --- Targets, alignment, stop ------------------------------------------------------------------

  /// Goes to a position. @param mode 3 for an equatorial one @param name of the object; may be
  /// empty
  int Goto(int32_t mode, const double* position, const CString& name, CString& reply);
  /// Goes to the home position. The reply is not checked for a target below the horizon.
  int GotoHome(CString& reply);
  /// Goes to the park coordinates of the last status.
  int GotoPark(CString& reply);
  /// Goes to the position of the last status, which resumes tracking there.
  int GotoStar(CString& reply);
  /// Tells the controller that the mount points at a position.
  int Align(const double* position, int32_t mode, const CString& name, CString& reply);
  /// Drops the controller's alignment. @return 1 for every answer.
  int ResetAlign(CString& reply);
  int StopMotion(CString& reply);

  // --- Motion and guiding ----------------------------------------------------------------------

  /// Stores the speed step of the next hand moves; sends nothing. @param step 0 to 9, not checked
  int SetHandSpeed(int32_t step, CString& reply);
  /// Moves for one second. Non-zero flags move; north takes precedence over south, west over east.
  /// Without a flag it stops the motion.
  int HandMove(int32_t north, int32_t south, int32_t east, int32_t west, CString& reply);
  /// Moves for a time. @param durationMs milliseconds @param raRate, decRate in the controller's
  /// units
  int TimedMove(double durationMs, double raRate, double decRate, CString& reply);
  int SendGuideSpeed(double rateA, double rateB, CString& reply);
  /// Sends the meridian settings. The controller answers under another key than the expected one,
  /// so the result is 0 although the settings take effect.
  int SetMeridian(double stopPoint, double gotoValue, CString& reply);
  int SetGtsValue(int32_t value, CString& reply);

  // --- Site and clock --------------------------------------------------------------------------

  /// @param position latitude, then longitude, degrees @param zone hours east of universal time
  int SetLocation(const double* position, int32_t zone, CString& reply);
  /// @param position receives latitude, then longitude, degrees; all outputs unchanged on failure
  int GetLocation(double* position, int32_t* zone, CString& reply);
  /// Sends a local time, cut to the minute; seconds of 59.95 or more count as the next minute.
  int SetLocalTime(const SiteTime& time, CString& reply);
  /// @param time receives universal time in whole seconds, zone 0; unchanged on failure
  int GetUtcTime(SiteTime& time, CString& reply);
  /// Re-initialises the controller after its clock was changed.
  int InitMount(CString& reply);
  /// @param mjd receives the controller's clock of the last status, Modified Julian Date in days;
  ///         -1.0 before the first status.
  int GetControllerMjd(double* mjd) const;

  // --- Status ----------------------------------------------------------------------------------

  /// Reads the status and keeps it. Missing fields count as 0.
  /// @param position may be null @param state receives the state code (2 slewing, 3 parked)
  /// @param ready may be null; receives 1 if the mount is ready to observe, else 0
  /// @return 1 if the answer was a status; else 0, and nothing changes.
  int ReadStatus(double* position, int32_t* state, int32_t* ready);
  /// @param side receives -1 or 1, the negated pier side of the last status; 0 before the first.
  /// Any thread; sends nothing. @return 1.
  int GetPierSide(int32_t* side) const;

  // --- Dates (no exchange) ---------------------------------------------------------------------

  /// Adds or subtracts a span. Exact while months stay within one year of their range. The ten days
  /// that October 1582 skipped become the 4th or the 15th. The zone of `time` does not change.
  static void AddDateTime(SiteTime& time, const SiteTime& offset, int32_t subtract);
  /// @return the Julian date (universal time), days.
  static double DateTimeToJd(const SiteTime& time);
  /// The zone of `time` does not change.
  static void JdToDateTime(double jd, SiteTime& time);

  // --- Positions as query text; part of the command set, not called ----------------------------

  /// @param position degrees @return for example "ra=05+34.5&dec=22+01".
  CString FormatRaDecQuery(const double* position) const;
  /// Appends the pieces of a text between "&", in order.
  static void SplitQuery(const CString& text, StringList& list);
  /// Finds the first entry "KEY=...", case-insensitively. @param value receives the text after it;
  /// unchanged if there is no such entry. @return 1 when found, else 0.
  static int FindQueryValue(const StringList& list, const CString& key, CString& value);

 private:
  friend class VQCtrlProbe;  // the tests' view of what the last replies changed

  int Exchange(const CString& command, const char* prefix, CString& reply);
  int SendTarget(int32_t mode, double raHours, double decDegrees, const CString& name,
                 CString& reply);
  int SendMove(double durationSeconds, double raRate, double decRate, CString& reply);
  int ReadModel(const CString& reply);
  void Log(const char* event);

  CUdpLink link;
  CString version;  // the whole reply to the second version query of Open
  CString host;
  int32_t port = 0;
  int32_t openArg = 0;
  int32_t modelA = 0;
  int32_t handSpeed = 1;
  double modelB = 0.0;
  double modelC = 0.0;
  int32_t fineQuery = 0;              // finer numbers in FormatRaDecQuery; never set
  std::atomic<int32_t> pierSide = 0;  // 1 or -1; 0 before the first status
  int32_t unparked = 0;
  double controllerMjd = -1.0;      // days
  double position[2] = {0.0, 0.0};  // degrees: right ascension, declination
  double statusF6 = 0.0;            // park coordinates as received
  double statusF7 = 0.0;
  std::shared_ptr<logging::orlin::Logger> logger;  // null while the device log is off
};

static_assert(sizeof(std::atomic<int32_t>) == sizeof(int32_t));
