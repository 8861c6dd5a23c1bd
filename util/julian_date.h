/* SPDX-License-Identifier: MIT */
/* Calendar dates and Julian dates. Exported from the library under these plain names; the host may
   call them. Pure functions: any thread. Dates before 1582-10-15 are in the Julian calendar. */
#ifndef VELQUIN_UTIL_JULIAN_DATE_H
#define VELQUIN_UTIL_JULIAN_DATE_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Julian date of a calendar date.
 *  @param year for example 2026.0
 *  @param month 1 to 12
 *  @param day day of the month plus the fraction of the day (universal time)
 *  @return days; 2451545.0 for 2000-01-01 12:00
 *  The constants 30.59 and 1721086.5 are this formula's own; the Gregorian correction is applied
 *  when the uncorrected result lies above 2299160.5. */
double CalcJd(double year, double month, double day);

/** Modified Julian Date: days since 1858-11-17 00:00. @param jd Julian date, days */
double GetMjd(double jd);

/** Calendar date of a Julian date; undoes CalcJd.
 *  @param jd Julian date, days, not negative
 *  @param year, month receive whole numbers
 *  @param day receives the day of the month plus the fraction of the day
 *  Written in the order day, month, year. Formula: J. Meeus, Astronomical Algorithms, ch. 7. */
void JdToDate(double jd, int32_t* year, int32_t* month, double* day);

#ifdef __cplusplus
}
#endif

#endif
