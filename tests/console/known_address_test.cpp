// SPDX-License-Identifier: MIT
// The address that a controller answered at.
#include "console/known_address.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace velquinctl {
namespace {

std::string NoNameServer(const std::string&) {
  throw std::runtime_error("not to be asked");
}

TEST(KnownAddress, IsNotLookedUpAgainOnceAControllerAnswered) {
  KnownAddress known;
  known.Keep("east-pier", "192.168.1.10");
  EXPECT_EQ(known.Find("east-pier", NoNameServer), "192.168.1.10");
}

TEST(KnownAddress, IsLookedUpAnewBeforeAnAnswerAndForAnotherName) {
  KnownAddress known;
  EXPECT_EQ(known.Find("east-pier", [](const std::string& name) { return name + '1'; }),
            "east-pier1");
  EXPECT_EQ(known.Find("east-pier", [](const std::string& name) { return name + '2'; }),
            "east-pier2")
      << "nobody answered at the first one";
  known.Keep("east-pier", "192.168.1.10");
  EXPECT_THROW(known.Find("west-pier", NoNameServer), std::runtime_error);
}

}  // namespace
}  // namespace velquinctl
