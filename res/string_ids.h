// SPDX-License-Identifier: MIT
// The numbers of the string table (strings.inc) that code refers to.
#pragma once

inline constexpr unsigned kTextSocketsFailed = 101;
inline constexpr unsigned kTextNoResponse = 10001;
inline constexpr unsigned kTextBelowHorizon = 10002;
inline constexpr unsigned kTextCommandRefused = 10003;
inline constexpr unsigned kTextSyncQuestion = 10004;
