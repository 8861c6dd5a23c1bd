/* SPDX-License-Identifier: MIT */
/* What the library offers besides the telescope: dates, angles and a splitter of text lines.
 *
 * Rules for all of it
 *  - Link against the import library, or load velquin.dll and use the function types: each of the
 *    six functions has one, named after it with "Fn" behind. The class needs the import library.
 *  - Nothing here needs a session, a window or the network, and nothing blocks.
 *  - The six functions keep nothing between calls: any thread may call them at any time. Nothing is
 *    checked but what is said below, and nothing is thrown. A number that is too large for a 32-bit
 *    result becomes the nearest one that fits; a result for no number (NaN) is 0 there.
 */
#ifndef VELQUIN_API_VELQUIN_UTIL_H
#define VELQUIN_API_VELQUIN_UTIL_H

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

/* --- Dates; before 1582-10-15 they are those of the Julian calendar --------------------------- */

/** Converts a calendar date to a Julian date. The constants 30.59 and 1721086.5 are this formula's
 *  own; the Gregorian correction is applied when the uncorrected result lies above 2299160.5. For
 *  the days from 1582-10-05 to 14, which the calendars leave out, the result means nothing.
 *  @param year for example 2026.0
 *  @param month 1.0 to 12.0
 *  @param day day of the month plus the fraction of the day, universal time
 *  @return Julian date, days: 2451545.0 for 2000-01-01 12:00. No number (NaN) when an argument is
 *          none; endless or no number when one is endless or too large. */
VELQUIN_API double CalcJd(double year, double month, double day);
typedef double (*CalcJdFn)(double, double, double);

/** Converts a Julian date to a Modified Julian Date.
 *  @param jd Julian date, days
 *  @return days since 1858-11-17 00:00, which is jd - 2400000.5. */
VELQUIN_API double GetMjd(double jd);
typedef double (*GetMjdFn)(double);

/** Converts a Julian date to a calendar date; undoes CalcJd. Formula: J. Meeus, Astronomical
 *  Algorithms, chapter 7. Where the year does not fit 32 bits (an endless date, or one of more than
 *  7.8e11 days) it is the nearest that does, or 0, and month and day mean nothing, -1 for example.
 *  What is no number gives year 0, month 0 and no day (NaN).
 *  @param jd Julian date, days, not negative
 *  @param year receives the year; must not be null
 *  @param month receives the month, 1 to 12; must not be null
 *  @param day receives the day of the month plus the fraction of the day; must not be null */
VELQUIN_API void JdToDate(double jd, int32_t* year, int32_t* month, double* day);
typedef void (*JdToDateFn)(double, int32_t*, int32_t*, double*);

/* --- Angles ----------------------------------------------------------------------------------- */

/* Whatever packing the host has chosen for its own records. */
#pragma pack(push, 8)

/** Hours, minutes and seconds, 16 bytes. */
typedef struct HourMinSec {
  int32_t nHour; /**< whole hours, rounded down: negative for a negative time */
  int32_t nMin;  /**< 0 to 59; rounding may make it 60 just below a whole hour */
  double dSec;   /**< 0.0 up to 60.0, give or take a rounding error */
} HourMinSec;

#pragma pack(pop)

/** Splits hours into hours, minutes and seconds. Hours that do not fit 32 bits become the
 *  nearest that do, and minutes and seconds mean nothing; what is no number gives 0 h, 0 min and no
 *  seconds (NaN).
 *  @param hours any sign: -1.5 gives -2 h, 30 min, 0 s
 *  @param result written whole; must not be null */
VELQUIN_API void HourTo60(double hours, HourMinSec* result);
typedef void (*HourTo60Fn)(double, HourMinSec*);

/** Brings an angle into one turn.
 *  @param degrees any angle; an infinite one gives no number (NaN)
 *  @return the same direction, degrees in [0, 360): -30 gives 330. */
VELQUIN_API double degmal(double degrees);
typedef double (*degmalFn)(double);

/** Brings an angle into (-180, 180] and clamps it to [-90, 90]. Meant for declinations that are in
 *  range or nearly so: an angle beyond the pole is not folded back, 170 gives 90 and 200 gives -90.
 *  @param degrees any angle; an infinite one, or none at all (NaN), gives 90
 *  @return degrees in [-90, 90]. */
VELQUIN_API double degmal2(double degrees);
typedef double (*degmal2Fn)(double);

#ifdef __cplusplus
}
#endif

/* --- Fields of a line; a class, in C++ only ---------------------------------------------------
 *
 * Its texts are the strings of the host's own framework, so only 64-bit hosts of Microsoft's
 * compiler (or one that is compatible with it) see it. It is left out in C, and for every other
 * C++ compiler, which has no such strings.
 */
#if defined(__cplusplus) && defined(_MSC_VER) && defined(_M_X64)

namespace ATL {
template <typename BaseType>
class ChTraitsCRT;
template <typename BaseType, class StringTraits>
class CStringT;
}  // namespace ATL
template <typename CharType, class StringIterator>
class StrTraitMFC_DLL;

/** The narrow string of the framework's DLL: `CString` in a host that is built without UNICODE,
 *  `CStringA` in any. Only declared here; include the framework's own header (before or after this
 *  one) to make such strings. */
typedef ATL::CStringT<char, StrTraitMFC_DLL<char, ATL::ChTraitsCRT<char>>> VelquinString;

/** Splits one line of text into fields and hands them out by index, 48 bytes. The host makes
 *  objects of it in its own storage; they cannot be copied. Not locked: one thread at a time may
 *  use an object, different objects do not disturb each other. Nothing is thrown; without memory
 *  for the fields there are none.
 *
 *  Each text given by value is the callee's and goes back to the string manager that made it. A
 *  text that is returned belongs to the caller; its memory goes back to the library through the
 *  manager in its header, as the framework does it by itself, so all of them must be gone before
 *  the library is unloaded. */
class CStringSep {
 public:
  /** Makes an object without fields. */
  VELQUIN_API CStringSep();

  /** Gives back the fields. */
  VELQUIN_API ~CStringSep();

  /** Replaces the fields by the split of a text. Every field loses its white space at both ends
   *  (space, tab, line feed, vertical tab, form feed, carriage return). Empty fields are kept, but
   *  a separator at the very end makes no empty last field.
   *  @param line text to split; empty makes no fields
   *  @param separator empty means ","; of a longer one only the first character is skipped, so that
   *         the rest of it begins the next field: "a::b" at "::" gives "a" and ":b"
   *  @param flags ignored */
  VELQUIN_API void Set(VelquinString line, VelquinString separator, unsigned long flags);

  /** Tells how many fields there are.
   *  @return their number, 0 before the first Set. */
  VELQUIN_API int64_t GetCount();

  /** Gives one field.
   *  @param index 0 up to, but not including, GetCount()
   *  @return the field; an empty text for any other index. */
  VELQUIN_API VelquinString GetParam(int index);

  /** Compares one field with a text.
   *  @param index 0 up to, but not including, GetCount()
   *  @param text compared without regard to case
   *  @return 1 when they are equal, else 0; 0 for any other index. */
  VELQUIN_API int Same(int index, VelquinString text);

  /** Reads one field as a number, with "." as decimal point whatever the locale.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the number that the field begins with; 0.0 when it begins with none. */
  VELQUIN_API double atof(int index, double fallback);

  /** Reads one field as a decimal integer.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the integer that the field begins with, held within 32 bits; 0 when it begins with
   *          none. */
  VELQUIN_API int atoi(int index, int fallback);

  /** The same as atoi. Despite its name it does not read hexadecimal: "1F" gives 1, "0x10" gives 0.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the integer that the field begins with. */
  VELQUIN_API int atox(int index, int fallback);

 private:
  CStringSep(const CStringSep&);            /* not there */
  CStringSep& operator=(const CStringSep&); /* not there */

  void* contents[6]; /* a string, then an array of strings: the library's alone */
};

static_assert(sizeof(CStringSep) == 48, "a string, then an array");

#endif

#endif
