// SPDX-License-Identifier: MIT
// How captions are cut on systems that do not centre them; every byte is 10 pixels wide.
#include "library/ui/caption_text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string Cut(const char* text, LONG limit) {
  const CString cut =
      CutCaption(text, limit, [](const CString& part) { return part.GetLength() * 10L; });
  return std::string(cut.GetString());
}

TEST(CaptionTextTest, ATextThatFitsStays) {
  EXPECT_EQ(Cut("VELQUIN", 70), "VELQUIN");
}

TEST(CaptionTextTest, ALongerOneLosesItsEndToThreeDots) {
  EXPECT_EQ(Cut("VELQUIN", 69), "VEL...");
  EXPECT_EQ(Cut("VELQUIN", 60), "VEL...");
  EXPECT_EQ(Cut("VELQUIN", 59), "VE...");
  EXPECT_EQ(Cut("VELQUIN", 40), "V...");
}

TEST(CaptionTextTest, NothingIsLeftWhereNotEvenOneCharacterFits) {
  EXPECT_EQ(Cut("VELQUIN", 39), "");
  EXPECT_EQ(Cut("VELQUIN", 0), "");
}

TEST(CaptionTextTest, ADoubleByteCharacterIsNotTornApart) {
  EXPECT_EQ(Cut("\x96\x6B\x93\xEC\x93\x8C\x90\xBC", 79), "\x96\x6B\x93\xEC...");
  EXPECT_EQ(Cut("\x96\x6B\x93\xEC\x93\x8C\x90\xBC", 69), "\x96\x6B...");
}

}  // namespace
