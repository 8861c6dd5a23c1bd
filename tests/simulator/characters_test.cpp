// SPDX-License-Identifier: MIT
#include "simulator/characters.h"

#include <gtest/gtest.h>

namespace {

using simulator::IsControlCharacter;
using simulator::IsPrintable;

TEST(Characters, ArePrintableFromTheSpaceToTheTilde) {
  for (int code = 0; code <= 0xff; ++code) {
    EXPECT_EQ(IsPrintable(static_cast<char>(code)), code >= 0x20 && code <= 0x7e) << code;
  }
}

TEST(Characters, AreControlCharactersBelowTheSpaceAndAtTheEndOfAscii) {
  for (int code = 0; code <= 0xff; ++code) {
    EXPECT_EQ(IsControlCharacter(static_cast<char>(code)), code <= 0x1f || code == 0x7f) << code;
  }
}

}  // namespace
