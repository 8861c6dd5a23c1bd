// SPDX-License-Identifier: MIT
// Texts in the code pages that a Windows system may have.
#include "console/text_encoding.h"

#include <gtest/gtest.h>

namespace velquinctl {
namespace {

constexpr unsigned kUtf8 = 65001;
constexpr unsigned kWestern = 1252;

TEST(TextEncoding, AWindowsWhoseCodePageIsUtf8LacksNoCharacter) {
  EXPECT_EQ(NarrowFromWide(kUtf8, L"C:\\\u5929\\"), "C:\\\u5929\\");
}

TEST(TextEncoding, AMissingCharacterIsNotReplaced) {
  EXPECT_EQ(NarrowFromWide(kWestern, L"C:\\Temp\\"), "C:\\Temp\\");
  EXPECT_EQ(NarrowFromWide(kWestern, L"\u5929"), std::nullopt);
}

}  // namespace
}  // namespace velquinctl
