/* SPDX-License-Identifier: MIT */
/* What a C compiler makes of the headers that a host may include. */
#pragma once

#ifdef __cplusplus
extern "C" {
#endif

int SizeOfHourMinSecInC(void);
int SizeOfSiteTimeInC(void);
int SizeOfSiteLocationInC(void);
/** The four date functions called from C, 2000-01-01.5 there and back: 20000101.5. */
double ModernEpochFromC(void);
/** The angle functions called from C: half an hour, in seconds. */
double FoldedSecondsFromC(void);

#ifdef __cplusplus
}
#endif
