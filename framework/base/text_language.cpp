// SPDX-License-Identifier: MIT
#include "framework/base/text_language.h"

#include "platform/user_language.h"
#include "res/resource_ids.h"

static_assert(TextResourceIn(TextLanguage::kEnglish, IDD_CONTROLLER) == IDD_CONTROLLER_ENGLISH);
static_assert(TextResourceIn(TextLanguage::kEnglish, IDD_DETAIL) == IDD_DETAIL_ENGLISH);
static_assert(TextResourceIn(TextLanguage::kEnglish, IDD_MESSAGE_BOX) == IDD_MESSAGE_BOX_ENGLISH);

namespace {

// Chosen once, with the module's other static objects. None of those asks while it is being built.
const TextLanguage textLanguage =
    ChooseTextLanguage(platform::NarrowCodePage(), platform::IsUserJapanese());

}  // namespace

TextLanguage AfxTextLanguage() {
  return textLanguage;
}

UINT AfxTextResource(UINT id) {
  return TextResourceIn(textLanguage, id);
}
