/* SPDX-License-Identifier: MIT */
/* The library's helpers besides the telescope: dates, angles and a splitter for text lines.
 *
 * Rules for all of them
 *  - Link against the import library, or load velquin.dll and use the function types. The type of
 *    each of the six functions is its name with "Fn" appended. The class needs the import library.
 *  - No function needs a session, a window or the network, and none blocks.
 *  - The six functions keep no state: any thread may call them at any time. They check only what
 *    their comments say, and throw nothing. A value too large for a 32-bit result becomes the
 *    nearest one that fits; NaN becomes 0 there.
 */
#ifndef VELQUIN_API_VELQUIN_UTIL_H
#define VELQUIN_API_VELQUIN_UTIL_H

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

/* --- Dates; Julian calendar before 1582-10-15 ------------------------------------------------- */

/** Converts a calendar date to a Julian date. The constants 30.59 and 1721086.5 are particular to
 *  this formula; the Gregorian correction applies when the uncorrected result is above 2299160.5.
 *  The calendars skip the days from 1582-10-05 to 14: the result for them is meaningless.
 *  @param year for example 2026.0
 *  @param month 1.0 to 12.0
 *  @param day day of the month plus the fraction of the day, universal time
 *  @return Julian date, days: 2451545.0 for 2000-01-01 12:00. NaN if an argument is NaN; infinite
 *          or NaN if an argument is infinite or too large. */
VELQUIN_API double CalcJd(double year, double month, double day);
typedef double (*CalcJdFn)(double, double, double);

/** Converts a Julian date to a Modified Julian Date.
 *  @param jd Julian date, days
 *  @return days since 1858-11-17 00:00, which is jd - 2400000.5. */
VELQUIN_API double GetMjd(double jd);
typedef double (*GetMjdFn)(double);

/** Converts a Julian date to a calendar date; the inverse of CalcJd. Formula: J. Meeus,
 *  Astronomical Algorithms, chapter 7. If the year does not fit 32 bits (an infinite date, or more
 *  than 7.8e11 days), it becomes the nearest value that fits, or 0; month and day are then
 *  meaningless, -1 for example. NaN gives year 0, month 0 and a NaN day.
 *  @param jd Julian date, days, not negative
 *  @param year receives the year; must not be null
 *  @param month receives the month, 1 to 12; must not be null
 *  @param day receives the day of the month plus the fraction of the day; must not be null */
VELQUIN_API void JdToDate(double jd, int32_t* year, int32_t* month, double* day);
typedef void (*JdToDateFn)(double, int32_t*, int32_t*, double*);

/* --- Angles ----------------------------------------------------------------------------------- */

/* The packing is fixed, independent of the host's compiler options. */
#pragma pack(push, 8)

/** Hours, minutes and seconds, 16 bytes. */
typedef struct HourMinSec {
  int32_t nHour; /**< whole hours, rounded down: negative for a negative time */
  int32_t nMin;  /**< 0 to 59; rounding may make it 60 just below a whole hour */
  double dSec;   /**< 0.0 to 60.0, within a rounding error */
} HourMinSec;

#pragma pack(pop)

/** Splits hours into hours, minutes and seconds. Hours that do not fit 32 bits become the nearest
 *  value that fits; minutes and seconds are then meaningless. NaN gives 0 h, 0 min and NaN seconds.
 *  @param hours any sign: -1.5 gives -2 h, 30 min, 0 s
 *  @param result all fields are written; must not be null */
VELQUIN_API void HourTo60(double hours, HourMinSec* result);
typedef void (*HourTo60Fn)(double, HourMinSec*);

/** Normalises an angle to one turn.
 *  @param degrees any angle; an infinite one gives NaN
 *  @return the same direction, degrees in [0, 360): -30 gives 330. */
VELQUIN_API double degmal(double degrees);
typedef double (*degmalFn)(double);

/** Normalises an angle to (-180, 180] and clamps it to [-90, 90]. Use it for declinations that are
 *  in range or nearly so: an angle beyond the pole is not folded back, 170 gives 90 and 200 gives
 *  -90.
 *  @param degrees any angle; infinities and NaN give 90
 *  @return degrees in [-90, 90]. */
VELQUIN_API double degmal2(double degrees);
typedef double (*degmal2Fn)(double);

#ifdef __cplusplus
}
#endif

/* --- Fields of a line; a class, in C++ only ---------------------------------------------------
 *
 * Its texts are strings of the framework that the host uses. So only 64-bit hosts built with
 * Microsoft's compiler, or a compatible one, see the class. C and all other C++ compilers do not:
 * they do not have these strings.
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
 *  `CStringA` in every host. It is only declared here: include the framework's header, before or
 *  after this one, to create such strings. */
typedef ATL::CStringT<char, StrTraitMFC_DLL<char, ATL::ChTraitsCRT<char>>> VelquinString;

/** Splits one line of text into fields and returns them by index, 48 bytes. The host creates the
 *  objects in its own storage; they cannot be copied. Not locked: one thread at a time may use an
 *  object. Different objects are independent. Throws nothing: if there is no memory for the fields,
 *  the object has no fields.
 *
 *  The callee owns each text that is passed by value and frees it through the string manager that
 *  created it. The caller owns a returned text. The framework frees its memory by itself, through
 *  the manager in the text's header, which belongs to the library. So destroy all returned texts
 *  before the library is unloaded. */
class CStringSep {
 public:
  /** Creates an object without fields. */
  VELQUIN_API CStringSep();

  /** Frees the fields. */
  VELQUIN_API ~CStringSep();

  /** Splits a text; the fields replace the earlier ones. White space is removed from both ends of
   *  every field (space, tab, line feed, vertical tab, form feed, carriage return). Empty fields
   *  are kept, but a separator at the end of the line adds no empty field.
   *  @param line text to split; empty gives no fields
   *  @param separator empty means ",". Only the first character of a longer separator is skipped;
   *         the rest begins the next field: "a::b" at "::" gives "a" and ":b"
   *  @param flags ignored */
  VELQUIN_API void Set(VelquinString line, VelquinString separator, unsigned long flags);

  /** Returns the number of fields.
   *  @return 0 or more; 0 before the first Set. */
  VELQUIN_API int64_t GetCount();

  /** Returns one field.
   *  @param index 0 up to, but not including, GetCount()
   *  @return the field; an empty text for any other index. */
  VELQUIN_API VelquinString GetParam(int index);

  /** Compares one field with a text.
   *  @param index 0 up to, but not including, GetCount()
   *  @param text compared case-insensitively
   *  @return 1 if they are equal, else 0; 0 for any other index. */
  VELQUIN_API int Same(int index, VelquinString text);

  /** Reads one field as a number, with "." as decimal point in every locale.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the number at the beginning of the field; 0.0 if there is none. */
  VELQUIN_API double atof(int index, double fallback);

  /** Reads one field as a decimal integer.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the integer at the beginning of the field, clamped to 32 bits; 0 if there is none. */
  VELQUIN_API int atoi(int index, int fallback);

  /** The same as atoi. Despite its name it does not read hexadecimal: "1F" gives 1, "0x10" gives 0.
   *  @param index 0 up to, but not including, GetCount()
   *  @param fallback the result for any other index
   *  @return the integer at the beginning of the field, as atoi. */
  VELQUIN_API int atox(int index, int fallback);

 private:
  CStringSep(const CStringSep&);            /* not defined */
  CStringSep& operator=(const CStringSep&); /* not defined */

  void* contents[6]; /* a string, then an array of strings; private to the library */
};

static_assert(sizeof(CStringSep) == 48, "a string, then an array");

#endif

#endif
