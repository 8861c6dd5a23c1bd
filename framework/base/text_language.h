// SPDX-License-Identifier: MIT
// The language of the library's texts and windows. They are Japanese, and English on systems that
// would show the Japanese ones as question marks. Any thread.
#pragma once

#include <cstdint>

#include "framework/base/types.h"
#include "res/string_ids.h"

enum class TextLanguage : uint8_t { kJapanese, kEnglish };

/// The rule.
/// @param codePage the number of the code page that narrow texts are shown through
/// @param userIsJapanese whether the language of the user's windows is Japanese
/// @return Japanese for the Japanese code page; UTF-8 can show every language, so the user's counts
///         there; English for every other code page.
constexpr TextLanguage ChooseTextLanguage(uint32_t codePage, bool userIsJapanese) {
  constexpr uint32_t kJapaneseCodePage = 932;
  constexpr uint32_t kUtf8 = 65001;
  const bool japanese = codePage == kJapaneseCodePage || (codePage == kUtf8 && userIsJapanese);
  return japanese ? TextLanguage::kJapanese : TextLanguage::kEnglish;
}

/// @param id number of a dialog or a string: the Japanese one, or one that serves all languages
/// @return the number of the resource that says the same in a language.
constexpr UINT TextResourceIn(TextLanguage language, UINT id) {
  return language == TextLanguage::kEnglish && id < kEnglishTexts ? id + kEnglishTexts : id;
}

/// The language that was chosen when this module was loaded; it stays until the module is unloaded.
TextLanguage AfxTextLanguage();

/// TextResourceIn for that language.
UINT AfxTextResource(UINT id);
