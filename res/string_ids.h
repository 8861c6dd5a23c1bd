// SPDX-License-Identifier: MIT
// The numbers of the string table that code refers to. Each string has two: the one below with the
// Japanese text (strings.inc), and one that is kEnglishTexts higher with the English text
// (strings_english.inc). The dialogs' numbers in resource_ids.h follow the same rule. A number from
// kEnglishTexts on that is nobody's English counterpart, as the title 57344, serves all languages.
#pragma once

inline constexpr unsigned kEnglishTexts = 20000;

inline constexpr unsigned kTextSocketsFailed = 101;
inline constexpr unsigned kTextNoResponse = 10001;
inline constexpr unsigned kTextBelowHorizon = 10002;
inline constexpr unsigned kTextCommandRefused = 10003;
inline constexpr unsigned kTextSyncQuestion = 10004;
