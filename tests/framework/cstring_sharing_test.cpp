// SPDX-License-Identifier: MIT
// Copies of a string share its text until one of them is changed.
#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

#include "tests/framework/cstring_layout.h"

namespace {

class SharedString : public testing::Test {
 protected:
  const CString original{"shared text"};
  CString copy{original};

  void ExpectSeparated() {
    EXPECT_NE(TextPointer(copy), TextPointer(original));
    EXPECT_STREQ(original, "shared text");
    EXPECT_EQ(original.GetLength(), 11);
    EXPECT_EQ(HeaderOf(original).owners, 1);
    EXPECT_EQ(HeaderOf(copy).owners, 1);
  }
};

}  // namespace

TEST_F(SharedString, HasOneTextAndCountsItsOwners) {
  EXPECT_EQ(TextPointer(copy), TextPointer(original));
  EXPECT_EQ(HeaderOf(original).owners, 2);
  {
    CString third;
    third = copy;
    EXPECT_EQ(HeaderOf(original).owners, 3);
  }
  EXPECT_EQ(HeaderOf(original).owners, 2);
  copy = "another";
  EXPECT_EQ(HeaderOf(original).owners, 1);
}

TEST_F(SharedString, IsSeparatedByAppending) {
  copy += "!";
  EXPECT_STREQ(copy, "shared text!");
  ExpectSeparated();
}

TEST_F(SharedString, IsSeparatedByAppendingBytes) {
  copy.Append("?!", 1);
  EXPECT_STREQ(copy, "shared text?");
  ExpectSeparated();
}

TEST_F(SharedString, IsSeparatedByRemovingCharacters) {
  EXPECT_EQ(copy.Remove('t'), 2);
  EXPECT_STREQ(copy, "shared ex");
  ExpectSeparated();
}

TEST_F(SharedString, IsSeparatedByFormatting) {
  copy.Format("%s %d", original.GetString(), 2);
  EXPECT_STREQ(copy, "shared text 2");
  ExpectSeparated();
}

TEST_F(SharedString, StaysSharedWhenNothingChanges) {
  EXPECT_EQ(copy.Remove('z'), 0);
  copy.Trim();
  copy.Append("more", 0);
  copy += "";
  EXPECT_EQ(TextPointer(copy), TextPointer(original));
  EXPECT_EQ(TextPointer(copy.Left(100)), TextPointer(original));
  EXPECT_EQ(TextPointer(copy.Mid(0)), TextPointer(original));
}

TEST_F(SharedString, KeepsItsTextWhenTheOriginalGoes) {
  CString kept;
  {
    const CString shortLived("short lived");
    kept = shortLived;
  }
  EXPECT_STREQ(kept, "short lived");
  EXPECT_EQ(HeaderOf(kept).owners, 1);
}

TEST_F(SharedString, ChangesHandsByMoving) {
  const char* text = TextPointer(copy);
  CString moved(std::move(copy));
  EXPECT_EQ(TextPointer(moved), text);
  EXPECT_EQ(HeaderOf(original).owners, 2);
  EXPECT_TRUE(copy.IsEmpty());  // NOLINT: a moved-from string is empty
  CString assigned("before");
  assigned = std::move(moved);
  EXPECT_EQ(TextPointer(assigned), text);
  EXPECT_EQ(HeaderOf(original).owners, 2);
}

TEST_F(SharedString, CanBeAssignedToItself) {
  const CString* const itself = &copy;
  copy = *itself;
  EXPECT_STREQ(copy, "shared text");
  EXPECT_EQ(HeaderOf(original).owners, 2);
}

// A count that is not changed atomically comes out wrong here.
TEST_F(SharedString, CountsItsOwnersInSeveralThreads) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([mine = original] {
      for (int round = 0; round < 100000; ++round) const CString shortLived(mine);
    });
  }
  for (std::thread& thread : threads) thread.join();
  threads.clear();
  EXPECT_EQ(HeaderOf(original).owners, 2);
  EXPECT_STREQ(original, "shared text");
}

// Each thread copies, changes and drops its own copies of one text, as host and worker do.
TEST_F(SharedString, MayBeCopiedAndChangedInSeveralThreads) {
  std::atomic<int> wrong = 0;
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    // Each thread owns the copy it starts from.
    threads.emplace_back([&wrong, mine = original] {
      for (int round = 0; round < 5000; ++round) {
        CString changed(mine);
        const CString kept(changed);
        changed += "!";
        const CString empty;
        if (!(changed == "shared text!") || !(kept == "shared text") || !empty.IsEmpty()) ++wrong;
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  threads.clear();
  EXPECT_EQ(wrong, 0);
  EXPECT_STREQ(original, "shared text");
  EXPECT_EQ(HeaderOf(original).owners, 2);
}
