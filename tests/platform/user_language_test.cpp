// SPDX-License-Identifier: MIT
#include "platform/user_language.h"

#include <gtest/gtest.h>

#ifdef _WIN32

TEST(UserLanguage, IsThatOfTheJapaneseSystemThatTestsRunOn) {
  EXPECT_EQ(platform::NarrowCodePage(), 932u);
  EXPECT_TRUE(platform::IsUserJapanese());
}

#else

TEST(UserLanguage, IsJapaneseInUtf8WhateverTheEnvironmentSays) {
  EXPECT_EQ(platform::NarrowCodePage(), 65001u);
  EXPECT_TRUE(platform::IsUserJapanese());
}

#endif
