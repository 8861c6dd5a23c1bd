/* SPDX-License-Identifier: MIT */
/* The two records with which a host hands over its clock and its site. They cross the library's
   boundary, so their layout never changes. Plain C, so that any host language can mirror them. */
#ifndef VELQUIN_UTIL_SITE_RECORDS_H
#define VELQUIN_UTIL_SITE_RECORDS_H

#include <stdint.h>

/* Whatever packing the host has chosen for its own records. */
#pragma pack(push, 8)

/** The host's local clock, 40 bytes. */
typedef struct SiteTime {
  int32_t year;   /**< for example 2026 */
  int32_t month;  /**< 1 to 12 */
  int32_t day;    /**< 1 to 31 */
  int32_t hour;   /**< 0 to 23 */
  int32_t minute; /**< 0 to 59; four bytes of alignment follow */
  double second;  /**< 0.0 up to, but not including, 60.0 */
  double zone;    /**< hours east of universal time: local time = universal time + zone */
} SiteTime;

/** The host's observing site, 24 bytes. */
typedef struct SiteLocation {
  double latitude;  /**< degrees, north positive */
  double longitude; /**< degrees; the sign is the host's and the controller's, passed on as it is */
  double third;     /**< kept, never sent to the controller */
} SiteLocation;

#pragma pack(pop)

#endif
