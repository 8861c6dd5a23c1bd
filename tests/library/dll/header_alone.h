/* SPDX-License-Identifier: MIT */
/* What the files that include nothing but the public header have to tell the tests. */
#ifndef VELQUIN_TESTS_DLL_HEADER_ALONE_H
#define VELQUIN_TESTS_DLL_HEADER_ALONE_H

#ifdef __cplusplus
extern "C" {
#endif

/** Finds one of the library's functions by its name. */
typedef void* (*FindFunction)(const char* name);

/** A whole session, written in C. @return 1 when a position was read, which is then in radec. */
int RunSessionInC11(FindFunction find, const char* address, double* radec);

/** @return the highest speed step, asked for in C++11. */
int AskSpeedStepsInCpp11(FindFunction find);

#ifdef __cplusplus
}
#endif

#endif
