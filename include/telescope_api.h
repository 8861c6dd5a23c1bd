/* SPDX-License-Identifier: MIT */
/* The driver's whole surface: 27 plain functions that drive one equatorial mount.
 *
 * Rules for all of them
 *  - Link against the import library, or load velquin.dll and use the function types: each function
 *    has one, named after it with "Fn" behind.
 *  - The first argument is a window handle of the host (an HWND, or null). Only TelescopeStart and
 *    TelescopeCheck use it, as the owner of the hand-controller window; it stays the host's.
 *  - Results are 1 for done or true, 0 for failure or false, where nothing else is said. A call for
 *    which the system has no memory left gives 0, too, and may be made again. There is no error
 *    code: what the user has to know is told in a message box.
 *  - Angles are degrees in double precision, right ascension too (0 to 360, not hours). A position
 *    is two doubles: [0] right ascension, [1] declination, in the controller's own frame; the
 *    driver converts no epoch. Numbers are passed on as they are, their ranges are not checked:
 *    what is no number or endless is sent as "nan", "inf" or "-inf", for the controller to refuse,
 *    where nothing else is said.
 *  - Texts are zero-terminated, of any length, in the system's narrow code page. Null counts as an
 *    empty text. A text that makes no sense (an address that is none, a file that is not there)
 *    makes no call crash or wait; its comment tells what it does instead.
 *  - What a pointer points to is the host's. It is read, or written, before the call returns, and
 *    never kept. Null is allowed everywhere; a pointer to memory that is not the host's, or smaller
 *    than said here, is not noticed.
 *  - "Queues" means: the call stores its arguments, puts the request in the worker's queue and
 *    returns 1 at once. The worker sends it within one cycle (100 ms, 50 ms after the first hand
 *    move) when it is idle, and after the requests before it when it is not. Arguments are kept
 *    once for each kind of request: when two of a kind wait, both are sent with the later ones.
 *    TelescopeLook, TelescopeSync and TelescopeSetPos share one target.
 *    Whether the controller accepts a request shows only in later status. Requests queued while no
 *    session runs are kept and performed by the next session's first cycle.
 *  - Any thread may call any function at any time, within these bounds: a window is opened on a
 *    thread that runs a message loop; none may be called from DllMain; of TelescopeStart,
 *    TelescopeCheck and TelescopeEnd one at a time is at work. TelescopeEnd waits for the one
 *    before, also while TelescopeStart shows its message box, and TelescopeStart waits for a
 *    TelescopeCheck; what they do at once while a session runs is told there. No other call waits
 *    for the network or for the user. Nothing is thrown.
 *  - The log, a file that the user switches on in the registry before the library is loaded, is no
 *    part of any answer. The switch is judged by its bytes, whatever its type; one of more than 15
 *    bytes is off. Where the log's folder or its file cannot be made there is no log, and on a full
 *    disk it lacks what had no room. Nobody is told.
 *  - While the worker shows a message box (a target below the horizon, no target) it sends nothing,
 *    a stop neither, and reads no status: TelescopeGetPos keeps its answer.
 *
 * Calling order: the TelescopeSet... texts, optionally TelescopeCheck, TelescopeStart,
 * TelescopeBaseSetting, then queries and commands in any mix, and TelescopeEnd exactly once for
 * each successful TelescopeStart. A call out of this order, or twice, does no harm: it answers as
 * its comment says for the state it finds. What the last session knew (position, target, flags) is
 * still there at the next start.
 *
 * Unloading the library while a session runs is safe: the worker keeps it loaded, and the session
 * goes on until the process ends or the host loads the library again and calls TelescopeEnd. A
 * process that ends with a session running writes no journal.
 */
#ifndef VELQUIN_API_TELESCOPE_API_H
#define VELQUIN_API_TELESCOPE_API_H

#include <stddef.h>
#include <stdint.h>

/* A host imports the functions. The library's own build defines VELQUIN_BUILDING_LIBRARY. */
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

/** A window handle of the host (an HWND); may be null. */
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

/* --- Records; they cross the library's boundary, so their layout never changes ---------------- */

/* Whatever packing the host has chosen for its own records. */
#pragma pack(push, 8)

/** The host's local clock, 40 bytes. The controller is told whole minutes: the seconds are dropped,
 *  and 59.95 or more count as the next minute. */
typedef struct SiteTime {
  int32_t year;   /**< for example 2026 */
  int32_t month;  /**< 1 to 12 */
  int32_t day;    /**< 1 to 31 */
  int32_t hour;   /**< 0 to 23 */
  int32_t minute; /**< 0 to 59; four bytes of alignment follow */
  double second;  /**< 0.0 up to, but not including, 60.0 */
  double zone;    /**< hours east of universal time: local time = universal time + zone. The
                       controller is told whole hours, without the fraction: -4.5 becomes -4 */
} SiteTime;

/** The host's observing site, 24 bytes. */
typedef struct SiteLocation {
  double latitude;  /**< degrees, north positive */
  double longitude; /**< degrees; the sign is the host's and the controller's, passed on as it is */
  double third;     /**< kept, never sent to the controller */
} SiteLocation;

#pragma pack(pop)

/* --- Texts and settings; any time, usually before TelescopeStart ------------------------------ */

/** Stores the display name. From the next TelescopeStart on it is the title of every message box,
 *  and from the next TelescopeDialog on that of the hand-controller window; before it is VELQUIN.
 *  @param name empty leaves the message boxes their title
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetName(TelescopeWindow window, const char* name);
typedef int32_t (*TelescopeSetNameFn)(TelescopeWindow, const char*);

/** Stores the vendor's name. It is shown nowhere.
 *  @param vendor may be empty
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetVendor(TelescopeWindow window, const char* vendor);
typedef int32_t (*TelescopeSetVendorFn)(TelescopeWindow, const char*);

/** Stores where the meridian overrides are read from at each TelescopeStart: the keys
 *  "_OverrideMeridianStopPoint" (0.0 when missing) and "_OverrideMeridianGoto" (3.0 when missing).
 *  They are sent to the controller at every start, missing or not.
 *  @param iniFile full path of an INI file; a bare name is looked up in the Windows folder. A path
 *         of more than 259 characters counts as a missing file
 *  @param section name of its section, without brackets
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetIni(TelescopeWindow window, const char* iniFile,
                                    const char* section);
typedef int32_t (*TelescopeSetIniFn)(TelescopeWindow, const char*, const char*);

/** Stores the folder of the time-out journal: the exchanges with the controller that failed or took
 *  longer than 0.5 s since the library was loaded. Each TelescopeEnd writes all of them, into a new
 *  file, unless there are none.
 *  @param path a folder that exists, with a separator at its end: it is put in front of the file
 *         name as it stands. Empty means the current folder. Where the file cannot be made, or the
 *         disk is full, there is no journal or only its beginning, and nobody is told
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetLogPath(TelescopeWindow window, const char* path);
typedef int32_t (*TelescopeSetLogPathFn)(TelescopeWindow, const char*);

/** Stores the first part of the journal's file name, which becomes
 *  PREFIX_timeouterr_korvelwireless_YYYYMMDD_HHMMSS.txt.
 *  @param prefix may be empty
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetLogPrefix(TelescopeWindow window, const char* prefix);
typedef int32_t (*TelescopeSetLogPrefixFn)(TelescopeWindow, const char*);

/* --- Connection ------------------------------------------------------------------------------- */

/** Asks a controller for its version without starting anything. Blocks for the exchanges, at most
 *  0.5 s for each that stays unanswered, plus the look-up of a host name; shows no message.
 *  While a session runs (or is being started or ended) the call returns at once and leaves the link
 *  alone: the answer comes from that session's version text, whatever the address, and the owner
 *  window stays. A session that is being started has none until its controller has answered.
 *  A host name that is not found costs the process one socket for good, here and in TelescopeStart.
 *  @param window becomes the owner of the hand-controller window, when no session runs
 *  @param address dotted IPv4 address or host name; the port is always 60023
 *  @param unused ignored
 *  @param version receives the version, cut to versionSize - 1 characters; untouched on failure;
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

/** Connects to a controller and starts the worker. Blocks for the exchanges, at most 0.5 s for each
 *  that stays unanswered, plus the look-up of a host name. When the controller does not answer, a
 *  message box tells the user before the call returns.
 *  While a session runs (or is being started or ended) it returns 0 at once, without a message, and
 *  leaves that session, its owner window and its address untouched; there is never a second worker.
 *  @param window becomes the owner of the hand-controller window, until TelescopeEnd
 *  @param address dotted IPv4 address or host name; the port is always 60023
 *  @param unused ignored
 *  @param unusedNumber ignored
 *  @return 1 when the session runs, else 0. The user has then been told by a message box, except
 *          where there is a session already, as said above, and where the system has no thread to
 *          give or no memory left: these show only in the result. */
VELQUIN_API int32_t TelescopeStart(TelescopeWindow window, const char* address, void* unused,
                                   int32_t unusedNumber);
typedef int32_t (*TelescopeStartFn)(TelescopeWindow, const char*, void*, int32_t);

/** Ends the session: writes the time-out journal, closes the hand-controller window, lets the
 *  worker finish the requests before the close and waits for it without a time limit (a message
 *  box that the worker shows must be answered first, guide pulses run to their end). Without a
 *  session it writes the journal and closes the window all the same.
 *  @return 1. */
VELQUIN_API int32_t TelescopeEnd(TelescopeWindow window);
typedef int32_t (*TelescopeEndFn)(TelescopeWindow);

/** Hands over site and clock; queues sending them. The controller is re-initialised when its clock
 *  differs from the host's by a minute or more, and told to track where it points when it took the
 *  site and is ready to observe. That last command comes behind whatever is queued until then: a
 *  goto asked for at once is undone by it, and after TelescopeEnd at once it goes out at the
 *  beginning of the next session. So wait a second after this call.
 *  A failure is written to the debugger's output only. A date or time of day that does not exist is
 *  sent as it is; a zone that does not fit 32 bits is sent as the nearest that does, one that is no
 *  number as 0.
 *  @param time null leaves everything as it is
 *  @param location null leaves everything as it is
 *  @return 1. */
VELQUIN_API int32_t TelescopeBaseSetting(TelescopeWindow window, const SiteTime* time,
                                         const SiteLocation* location);
typedef int32_t (*TelescopeBaseSettingFn)(TelescopeWindow, const SiteTime*, const SiteLocation*);

/* --- State; answered from the last status poll, nothing is sent ------------------------------- */

/** Copies the last position read from the mount. It is read about ten times a second.
 *  @param radec receives two doubles, degrees, in every case: -1, -1 before the first status,
 *         later the last good position; null makes the result 0
 *  @return 0 when more than 10 polls in a row have failed, no position has been read, or its right
 *          ascension is negative, else 1. */
VELQUIN_API int32_t TelescopeGetPos(TelescopeWindow window, double* radec);
typedef int32_t (*TelescopeGetPosFn)(TelescopeWindow, double*);

/** Tells whether the mount is parked.
 *  @return 1 while the mount is not ready to observe (parked, or in a mode that is not ready; also
 *          before the first status), else 0. */
VELQUIN_API int32_t TelescopeGetParking(TelescopeWindow window);
typedef int32_t (*TelescopeGetParkingFn)(TelescopeWindow);

/** Tells the side of the pier, from the mount's axis angle.
 *  @return 0 for 90 degrees or less, 1 above, -1 before the first status. */
VELQUIN_API int32_t TelescopeGetEastWest(TelescopeWindow window);
typedef int32_t (*TelescopeGetEastWestFn)(TelescopeWindow);

/** Does nothing but answer.
 *  @return 1, connected or not. */
VELQUIN_API int32_t TelescopeGetStatus(TelescopeWindow window);
typedef int32_t (*TelescopeGetStatusFn)(TelescopeWindow);

/** Tells the highest speed step of TelescopeSlew.
 *  @return 9, connected or not. */
VELQUIN_API int32_t TelescopeGetSlewSpeedMax(TelescopeWindow window);
typedef int32_t (*TelescopeGetSlewSpeedMaxFn)(TelescopeWindow);

/* --- Motion ----------------------------------------------------------------------------------- */

/** Stores a target for a later TelescopeLook or TelescopeSync with null; queues nothing.
 *  @param radec two doubles, degrees; null is ignored
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetPos(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeSetPosFn)(TelescopeWindow, const double*);

/** Goes to a position; queues. A target below the horizon is reported by a message box, as is a
 *  call with null when no target was ever stored. Progress: TelescopeGetPos.
 *  @param radec two doubles, degrees, stored as the target; null goes to the stored target
 *  @return 1. */
VELQUIN_API int32_t TelescopeLook(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeLookFn)(TelescopeWindow, const double*);

/** Tells the mount that it points at a position; queues.
 *  @param radec two doubles, degrees, stored as the target; null takes the stored target, and does
 *         nothing when there is none
 *  @return 1. */
VELQUIN_API int32_t TelescopeSync(TelescopeWindow window, const double* radec);
typedef int32_t (*TelescopeSyncFn)(TelescopeWindow, const double*);

/** Empties the queue and queues a stop, so that it overtakes all that still waits. A request that
 *  is being performed is finished first.
 *  @return 1. */
VELQUIN_API int32_t TelescopeStop(TelescopeWindow window);
typedef int32_t (*TelescopeStopFn)(TelescopeWindow);

/** Moves by hand; queues. Call it again every 100 ms or so while the button is held: each move
 *  lasts one second at the most, and the mount stops by itself when it is not renewed. Calls while
 *  a hand move is the last request in the queue change that one instead of adding another.
 *  @param direction a TelescopeDirection; any other number is a move without a direction, which
 *         stops the motion of the hand
 *  @param push non-zero while held; 0 at the release, which sends nothing: the move that was sent
 *         last runs out
 *  @param speed step 0 to 9; any number is taken. The rate, in the controller's unit, is 25 for
 *         each step plus 0.5, and never less than 0.5 nor more than 200
 *  @return 1. */
VELQUIN_API int32_t TelescopeSlew(TelescopeWindow window, int32_t direction, int32_t push,
                                  int32_t speed);
typedef int32_t (*TelescopeSlewFn)(TelescopeWindow, int32_t, int32_t, int32_t);

/** Sends guide pulses; queues. One after the other north, south, east, west, each followed by a
 *  pause of 50 ms; a length that is not positive is left out. Until the last one has ended no
 *  status is read, no other request is sent, a stop neither, and TelescopeEnd waits: INT32_MAX are
 *  25 days.
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

/** Sets the guide speeds; queues. They are not those of TelescopeSlewPulseDuration, which has its
 *  own.
 *  @param rateA first value, as the controller understands it
 *  @param rateB second value, as the controller understands it
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetGuideSpeed(TelescopeWindow window, double rateA, double rateB);
typedef int32_t (*TelescopeSetGuideSpeedFn)(TelescopeWindow, double, double);

/** Goes to the home position; queues.
 *  @return 1. */
VELQUIN_API int32_t TelescopeHome(TelescopeWindow window);
typedef int32_t (*TelescopeHomeFn)(TelescopeWindow);

/** Parks where the last status said the park position is; queues. Before the first status it would
 *  be 0, 0, so wait for a TelescopeGetPos that returns 1.
 *  @return 1. */
VELQUIN_API int32_t TelescopePark(TelescopeWindow window);
typedef int32_t (*TelescopeParkFn)(TelescopeWindow);

/** Resumes tracking where the last status said the mount points; queues. Before the first status it
 *  would be 0, 0, so wait for a TelescopeGetPos that returns 1.
 *  @return 1. */
VELQUIN_API int32_t TelescopeUnPark(TelescopeWindow window);
typedef int32_t (*TelescopeUnParkFn)(TelescopeWindow);

/** Drops the controller's alignment; queues.
 *  @return 1. */
VELQUIN_API int32_t TelescopeAlignReset(TelescopeWindow window);
typedef int32_t (*TelescopeAlignResetFn)(TelescopeWindow);

/** Stores a pier side; nothing is sent, and the next TelescopeGetEastWest replaces it.
 *  @param side any number
 *  @return 1. */
VELQUIN_API int32_t TelescopeSetEastWest(TelescopeWindow window, int32_t side);
typedef int32_t (*TelescopeSetEastWestFn)(TelescopeWindow, int32_t);

/* --- Window ----------------------------------------------------------------------------------- */

/** Shows the hand-controller window (a window that is open is replaced) or closes it.
 *  Show it on a thread that runs a message loop. When it is closed on another thread, here or by
 *  TelescopeEnd, it stops at once to drive the mount and disappears as soon as its own thread
 *  handles messages. Without a session it may be open, too; only its home button is
 *  enabled then.
 *  @param show non-zero shows, 0 closes
 *  @return 1, also when the system could not open the window. */
VELQUIN_API int32_t TelescopeDialog(TelescopeWindow window, int32_t show);
typedef int32_t (*TelescopeDialogFn)(TelescopeWindow, int32_t);

#ifdef __cplusplus
}
#endif

#endif
