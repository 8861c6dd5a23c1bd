/* SPDX-License-Identifier: MIT */
/* The driver's public interface: 27 plain functions that drive one equatorial mount.
 *
 * Rules for all functions
 *  - Link against the import library, or load velquin.dll and use the function types. The type of
 *    each function is its name with "Fn" appended.
 *  - Any thread may call any function at any time, except from DllMain. Only TelescopeCheck,
 *    TelescopeStart and TelescopeEnd wait for the network or the user. No exception is thrown.
 *  - The result is 1 for done or true and 0 for failure or false, unless the function says
 *    otherwise. There are no error codes: problems that concern the user appear in a message box.
 *    A call that runs out of memory returns 0 and can be repeated.
 *  - The first argument is a window of the host. Only TelescopeStart and TelescopeCheck use it.
 *  - A position is two doubles in degrees in the controller's frame: [0] right ascension (0 to 360,
 *    not hours), [1] declination. Numbers are sent unchecked, for the controller to refuse; NaN and
 *    infinities are sent as "nan", "inf" or "-inf" unless the function says otherwise.
 *  - Texts are zero-terminated, of any length, in the system's narrow code page. Null is empty.
 *  - The host owns what a pointer points to; it is not used after the call returns. Null is allowed
 *    everywhere. An invalid pointer or a buffer that is too small is not detected.
 *  - "Queues" means: the call returns 1 at once, and the worker thread sends the request later.
 *    docs/hosts.md describes the queue, the calling order, sessions, unloading and the log.
 */
#ifndef VELQUIN_API_TELESCOPE_API_H
#define VELQUIN_API_TELESCOPE_API_H

#include <stddef.h>
#include <stdint.h>

/* A host imports the functions. The build of the library defines VELQUIN_BUILDING_LIBRARY. */
#ifndef VELQUIN_API
#if defined(_WIN32) && !defined(VELQUIN_BUILDING_LIBRARY)
#define VELQUIN_API __declspec(dllimport)
#else
#define VELQUIN_API
#endif
#endif

#ifdef __cplusplus
extern "C" {
#endif

/** A window handle of the host (an HWND), which stays the host's; may be null. */
typedef void* TelescopeWindow;

/** The directions of TelescopeSlew, in the order of the pulses of TelescopeSlewPulseDuration. North
 *  is a positive rate of the declination axis. East is a positive rate of the right ascension axis
 *  in a hand move, and a negative one in a pulse. */
typedef enum TelescopeDirection {
  TELESCOPE_NORTH = 1, /**< declination axis */
  TELESCOPE_SOUTH = 2, /**< declination axis, opposite of north */
  TELESCOPE_EAST = 3,  /**< right ascension axis */
  TELESCOPE_WEST = 4   /**< right ascension axis, opposite of east */
} TelescopeDirection;

/* --- Records; their layout never changes ------------------------------------------------------ */

/* The packing is fixed, independent of the host's compiler options. */
#pragma pack(push, 8)

/** The host's local clock, 40 bytes. The controller receives whole minutes: the seconds are
 *  dropped, and 59.95 or more count as the next minute. */
typedef struct SiteTime {
  int32_t year;   /**< for example 2026 */
  int32_t month;  /**< 1 to 12 */
  int32_t day;    /**< 1 to 31 */
  int32_t hour;   /**< 0 to 23 */
  int32_t minute; /**< 0 to 59; four bytes of alignment follow */
  double second;  /**< 0.0 up to, but not including, 60.0 */
  double zone;    /**< hours east of universal time: local time = universal time + zone. The
                       controller receives whole hours, without the fraction: -4.5 becomes -4 */
} SiteTime;

/** The host's observing site, 24 bytes. */
typedef struct SiteLocation {
  double latitude;  /**< degrees, north positive */
  double longitude; /**< degrees; host and controller agree on the sign, it is sent unchanged */
  double third;     /**< stored, never sent to the controller */
} SiteLocation;

#pragma pack(pop)

/* --- Texts and settings; any time, usually before TelescopeStart ------------------------------ */

/** Stores the display name. It is the title of every message box from the next TelescopeStart on,
 *  and the title of the hand-controller window from the next TelescopeDialog on. The title before
 *  that is VELQUIN.
 *  @param name empty keeps the title of the message boxes
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetName(TelescopeWindow window, const char* name);
typedef int32_t (*TelescopeSetNameFn)(TelescopeWindow, const char*);

/** Stores the vendor's name. It is not shown.
 *  @param vendor may be empty
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetVendor(TelescopeWindow window, const char* vendor);
typedef int32_t (*TelescopeSetVendorFn)(TelescopeWindow, const char*);

/** Stores the file and section of the meridian overrides. Each TelescopeStart reads the keys
 *  "_OverrideMeridianStopPoint" (0.0 when missing) and "_OverrideMeridianGoto" (3.0 when missing)
 *  and sends both values to the controller, also when the keys are missing.
 *  @param iniFile full path of an INI file; Windows looks up a bare name in its own folder. A path
 *         of more than 259 characters counts as a missing file
 *  @param section name of the section, without brackets
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetIni(TelescopeWindow window, const char* iniFile,
                                    const char* section);
typedef int32_t (*TelescopeSetIniFn)(TelescopeWindow, const char*, const char*);

/** Stores the folder of the time-out journal. The journal lists the exchanges with the controller
 *  that failed or took longer than 0.5 s since the library was loaded. Each TelescopeEnd writes the
 *  whole list to a new file, unless the list is empty.
 *  @param path an existing folder that ends with a separator: the file name is appended without
 *         one. Empty means the current folder. If the file cannot be created there is no journal;
 *         if the disk is full the journal is cut off. Neither is reported
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetLogPath(TelescopeWindow window, const char* path);
typedef int32_t (*TelescopeSetLogPathFn)(TelescopeWindow, const char*);

/** Stores the first part of the journal's file name. The whole name is
 *  PREFIX_timeouterr_korvelwireless_YYYYMMDD_HHMMSS.txt.
 *  @param prefix may be empty
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetLogPrefix(TelescopeWindow window, const char* prefix);
typedef int32_t (*TelescopeSetLogPrefixFn)(TelescopeWindow, const char*);

/* --- Connection ------------------------------------------------------------------------------- */

/** Asks a controller for its version without starting a session. Shows no message. Blocks for the
 *  look-up of a host name and for the exchanges, at most 0.5 s for each unanswered one.
 *  While a session runs (or is being started or ended) the call returns at once, with the version
 *  text of that session for every address. It uses no network and keeps the owner window. The
 *  version text of a session is empty until its controller has answered.
 *  A host name that does not resolve leaks one socket until the process ends, here and in
 *  TelescopeStart.
 *  @param window becomes the owner of the hand-controller window if no session runs; may be null
 *  @param address dotted IPv4 address or host name; the UDP port is always 60023
 *  @param unused ignored
 *  @param version receives the version, cut to versionSize - 1 characters; unchanged on failure;
 *         may be null
 *  @param versionSize size of version in bytes
 *  @param extra its first byte becomes 0 on success; may be null
 *  @param extraSize ignored
 *  @return 1 when the controller answered with a version that is not empty, else 0. */
VELQUIN_API int32_t TelescopeCheck(TelescopeWindow window, const char* address, void* unused,
                                   char* version, size_t versionSize, char* extra,
                                   size_t extraSize);
typedef int32_t (*TelescopeCheckFn)(TelescopeWindow, const char*, void*, char*, size_t, char*,
                                    size_t);

/** Connects to a controller and starts the worker thread. Blocks for the look-up of a host name and
 *  for the exchanges, at most 0.5 s for each unanswered one, and waits for a TelescopeCheck on
 *  another thread. If the controller does not answer, the call shows a message box and blocks until
 *  the user closes it.
 *  While a session runs (or is being started or ended) the call returns 0 at once, without a
 *  message. That session, its owner window and its address stay unchanged; there is never a second
 *  worker. Position, target and flags of the previous session are kept. The worker sends requests
 *  that were queued before the session in its first cycle.
 *  @param window becomes the owner of the hand-controller window until TelescopeEnd; may be null
 *  @param address dotted IPv4 address or host name; the UDP port is always 60023
 *  @param unused ignored
 *  @param unusedNumber ignored
 *  @return 1 when the session runs, else 0. No message box is shown if a session exists already, if
 *          the system cannot create a thread, or if it has no memory left. */
VELQUIN_API int32_t TelescopeStart(TelescopeWindow window, const char* address, void* unused,
                                   int32_t unusedNumber);
typedef int32_t (*TelescopeStartFn)(TelescopeWindow, const char*, void*, int32_t);

/** Ends the session; call it exactly once for each successful TelescopeStart. Writes the time-out
 *  journal, closes the hand-controller window, lets the worker finish the queued requests and waits
 *  for it without a time limit: guide pulses run to their end, and the user must first close a
 *  message box of the worker. A TelescopeStart (with its message box), TelescopeCheck or
 *  TelescopeEnd on another thread finishes first.
 *  Without a session the call writes the journal, closes the window and drops the owner window.
 *  @return 1. */
VELQUIN_API int32_t TelescopeEnd(TelescopeWindow window);
typedef int32_t (*TelescopeEndFn)(TelescopeWindow);

/** Hands over site and clock; queues. The worker re-initialises the controller if the controller's
 *  clock differs from the host's by a minute or more. If the controller accepts the site and is
 *  ready to observe, the worker then queues a command that tracks the current position. That
 *  command undoes a goto that was queued before it. If TelescopeEnd follows at once, the command is
 *  sent at the beginning of the next session. So wait a second after this call.
 *  A failure is written only to the debugger's output. An impossible date or time of day is sent
 *  unchanged. A zone outside 32 bits is sent as the nearest value inside, a NaN zone as 0.
 *  @param time null: the call changes and sends nothing
 *  @param location null: the call changes and sends nothing
 *  @return 1. */
VELQUIN_API int32_t TelescopeBaseSetting(TelescopeWindow window, const SiteTime* time,
                                         const SiteLocation* location);
typedef int32_t (*TelescopeBaseSettingFn)(TelescopeWindow, const SiteTime*, const SiteLocation*);

/* --- State; answered from the last status poll, nothing is sent ------------------------------- */

/** Copies the last position read from the mount. The worker reads it about ten times a second,
 *  except while it shows a message box or sends guide pulses.
 *  @param radec receives two doubles, degrees, also when the result is 0: -1, -1 before the first
 *         status, later the last good position. Null makes the result 0
 *  @return 0 if more than 10 polls in a row have failed, if no position has been read, or if the
 *          right ascension is negative; else 1. */
VELQUIN_API int32_t TelescopeGetPos(TelescopeWindow window, double* radec);
typedef int32_t (*TelescopeGetPosFn)(TelescopeWindow, double*);

/** Returns whether the mount is parked.
 *  @return 1 while the mount is not ready to observe (parked, or in a mode that is not ready; also
 *          before the first status), else 0. */
VELQUIN_API int32_t TelescopeGetParking(TelescopeWindow window);
typedef int32_t (*TelescopeGetParkingFn)(TelescopeWindow);

/** Returns the side of the pier, from the mount's axis angle.
 *  @return 0 for 90 degrees or less, 1 above 90 degrees, -1 before the first status. */
VELQUIN_API int32_t TelescopeGetEastWest(TelescopeWindow window);
typedef int32_t (*TelescopeGetEastWestFn)(TelescopeWindow);

/** Returns 1; says nothing about the mount.
 *  @return 1, connected or not. */
VELQUIN_API int32_t TelescopeGetStatus(TelescopeWindow window);
typedef int32_t (*TelescopeGetStatusFn)(TelescopeWindow);

/** Returns the highest speed step of TelescopeSlew.
 *  @return 9, connected or not. */
VELQUIN_API int32_t TelescopeGetSlewSpeedMax(TelescopeWindow window);
typedef int32_t (*TelescopeGetSlewSpeedMaxFn)(TelescopeWindow);

/* --- Motion; later status alone shows whether the controller accepts a request ---------------- */

/** Stores the target for a later TelescopeLook or TelescopeSync with null; queues nothing. The
 *  three functions share one target.
 *  @param radec two doubles, degrees; null is ignored
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetPos(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeSetPosFn)(TelescopeWindow, const double*);

/** Goes to a position; queues. The worker shows a message box if the target is below the horizon,
 *  or if radec is null and no target has ever been stored. Until the user closes it, the worker
 *  sends nothing, not even a stop, and reads no status. Progress: TelescopeGetPos.
 *  @param radec two doubles, degrees, stored as the target; null goes to the stored target
 *  @return 1. */
VELQUIN_API int32_t TelescopeLook(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeLookFn)(TelescopeWindow, const double*);

/** Tells the mount that it points at a position; queues.
 *  @param radec two doubles, degrees, stored as the target; null uses the stored target, and
 *         sends nothing if there is none
 *  @return 1. */
VELQUIN_API int32_t TelescopeSync(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeSyncFn)(TelescopeWindow, const double*);

/** Empties the queue and queues a stop. The worker first finishes the request that it is sending.
 *  @return 1. */
VELQUIN_API int32_t TelescopeStop(TelescopeWindow window);
typedef int32_t (*TelescopeStopFn)(TelescopeWindow);

/** Moves by hand; queues. Repeat the call about every 100 ms while the button is held: each move
 *  lasts at most one second, then the mount stops by itself. If the last request in the queue is a
 *  hand move, the call changes that one instead of adding another. The worker's cycle is 50 ms
 *  instead of 100 ms from the first hand move on.
 *  @param direction a TelescopeDirection; any other number stops the hand move
 *  @param push non-zero while held; 0 at the release, which sends nothing: the last move runs out
 *  @param speed step 0 to 9; any number is accepted. The rate, in the controller's unit, is
 *         0.5 + 25 per step, limited to 0.5 to 200
 *  @return 1. */
VELQUIN_API int32_t TelescopeSlew(TelescopeWindow window, int32_t direction, int32_t push,
                                  int32_t speed);
typedef int32_t (*TelescopeSlewFn)(TelescopeWindow, int32_t, int32_t, int32_t);

/** Sends guide pulses; queues. They run one after the other, north, south, east, west, each
 *  followed by a pause of 50 ms. A length of 0 or less skips that pulse. Until the last pulse has
 *  ended, the worker reads no status and sends no other request, not even a stop, and TelescopeEnd
 *  waits. A length of INT32_MAX lasts 25 days.
 *  @param northMs length, milliseconds
 *  @param southMs length, milliseconds
 *  @param eastMs length, milliseconds
 *  @param westMs length, milliseconds
 *  @param rateA rate of the east and west pulses, in the controller's unit
 *  @param rateB rate of the north and south pulses, in the controller's unit
 *  @return 1. */
VELQUIN_API int32_t TelescopeSlewPulseDuration(TelescopeWindow window, int32_t northMs,
                                               int32_t southMs, int32_t eastMs, int32_t westMs,
                                               double rateA, double rateB);
typedef int32_t (*TelescopeSlewPulseDurationFn)(TelescopeWindow, int32_t, int32_t, int32_t, int32_t,
                                                double, double);

/** Sets the guide speeds; queues. TelescopeSlewPulseDuration takes its rates from its arguments.
 *  @param rateA first value, in the controller's unit
 *  @param rateB second value, in the controller's unit
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetGuideSpeed(TelescopeWindow window, double rateA, double rateB);
typedef int32_t (*TelescopeSetGuideSpeedFn)(TelescopeWindow, double, double);

/** Goes to the home position; queues.
 *  @return 1. */
VELQUIN_API int32_t TelescopeHome(TelescopeWindow window);
typedef int32_t (*TelescopeHomeFn)(TelescopeWindow);

/** Parks at the park position of the last status; queues. Before the first status that is 0, 0, so
 *  wait until TelescopeGetPos returns 1. The worker shows a message box if the position is below
 *  the horizon; see TelescopeLook.
 *  @return 1. */
VELQUIN_API int32_t TelescopePark(TelescopeWindow window);
typedef int32_t (*TelescopeParkFn)(TelescopeWindow);

/** Resumes tracking at the position of the last status; queues. Before the first status that is
 *  0, 0, so wait until TelescopeGetPos returns 1. The worker shows a message box if the position is
 *  below the horizon; see TelescopeLook.
 *  @return 1. */
VELQUIN_API int32_t TelescopeUnPark(TelescopeWindow window);
typedef int32_t (*TelescopeUnParkFn)(TelescopeWindow);

/** Drops the controller's alignment; queues.
 *  @return 1. */
VELQUIN_API int32_t TelescopeAlignReset(TelescopeWindow window);
typedef int32_t (*TelescopeAlignResetFn)(TelescopeWindow);

/** Stores a pier side; sends nothing. The next TelescopeGetEastWest replaces it.
 *  @param side any number
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetEastWest(TelescopeWindow window, int32_t side);
typedef int32_t (*TelescopeSetEastWestFn)(TelescopeWindow, int32_t);

/* --- Window ----------------------------------------------------------------------------------- */

/** Shows the hand-controller window, replacing an open one, or closes it.
 *  Show it on a thread that runs a message loop. Any thread may close it, here or by TelescopeEnd:
 *  it stops driving the mount at once, and disappears as soon as the thread that opened it handles
 *  messages. The window can be open without a session; only its home button is enabled then.
 *  @param show non-zero shows, 0 closes
 *  @return 1, also if the system could not open the window. */
VELQUIN_API int32_t TelescopeDialog(TelescopeWindow window, int32_t show);
typedef int32_t (*TelescopeDialogFn)(TelescopeWindow, int32_t);

#ifdef __cplusplus
}
#endif

#endif
