/* SPDX-License-Identifier: MIT */
/* Splitting hours and folding angles. Exported from the library under these plain names; the host
   may call them. Pure functions: any thread. */
#ifndef VELQUIN_UTIL_ANGLES_H
#define VELQUIN_UTIL_ANGLES_H

#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/** Hours, minutes and seconds, 16 bytes. */
typedef struct HourMinSec {
  int32_t nHour; /**< whole hours, rounded down; negative for negative times */
  int32_t nMin;  /**< 0 to 59 */
  double dSec;   /**< 0.0 up to 60.0 */
} HourMinSec;

/** Splits hours. @param hours any sign; -1.5 gives -2 h, 30 min, 0 s
 *  @param result written whole */
void HourTo60(double hours, HourMinSec* result);

/** @param degrees any angle @return the same direction in [0, 360) */
double degmal(double degrees);

/** Folds an angle into (-180, 180] and clamps it to [-90, 90]. Meant for declinations that are in
 *  range or nearly so: an angle beyond the pole is not folded back (170 gives 90).
 *  @param degrees any angle @return degrees in [-90, 90] */
double degmal2(double degrees);

#ifdef __cplusplus
}
#endif

#endif
