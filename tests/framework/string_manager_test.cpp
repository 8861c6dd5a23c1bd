// SPDX-License-Identifier: MIT
#include "framework/base/string_manager.h"

#include <gtest/gtest.h>

#include <cstring>
#include <utility>

#include "framework/base/array.h"
#include "tests/framework/cstring_layout.h"

namespace {

IAtlStringMgr& Manager() {
  return *AfxGetStringManager();
}

class CountingManager final : public IAtlStringMgr {
 public:
  CStringData* Allocate(int, int) override { return nullptr; }
  void Free(CStringData*) override { ++freed; }
  CStringData* Reallocate(CStringData*, int, int) override { return nullptr; }
  CStringData* GetNilString() override { return nullptr; }
  IAtlStringMgr* Clone() override { return this; }

  int freed = 0;
};

}  // namespace

TEST(StringManager, GivesATextWithOneOwnerAndTheRoomAskedFor) {
  CStringData* data = Manager().Allocate(5, sizeof(char));
  ASSERT_NE(data, nullptr);
  EXPECT_EQ(data->pStringMgr, &Manager());
  EXPECT_EQ(data->nDataLength, 0);
  EXPECT_GE(data->nAllocLength, 5);
  EXPECT_EQ(data->nRefs, 1);
  std::memcpy(data->data(), "12345", 6);
  EXPECT_STREQ(data->data(), "12345");
  data->Release();
}

TEST(StringManager, KeepsTheTextWhenTheRoomChanges) {
  CStringData* data = Manager().Allocate(5, sizeof(char));
  ASSERT_NE(data, nullptr);
  std::memcpy(data->data(), "12345", 6);
  data->nDataLength = 5;
  data = Manager().Reallocate(data, 5000, sizeof(char));
  ASSERT_NE(data, nullptr);
  EXPECT_GE(data->nAllocLength, 5000);
  EXPECT_EQ(data->nDataLength, 5);
  EXPECT_STREQ(data->data(), "12345");
  Manager().Free(data);
}

TEST(StringManager, CountsTheOwnersOfItsEmptyTextAndNeverGivesItAway) {
  CStringData* nil = Manager().GetNilString();
  const int owners = nil->nRefs;
  for (int i = 0; i < 100; ++i) EXPECT_EQ(Manager().GetNilString(), nil);
  EXPECT_EQ(nil->nRefs, owners + 100);
  for (int i = 0; i < 100; ++i) nil->Release();
  nil->AddRef();
  nil->Release();
  nil->Release();
  EXPECT_EQ(nil->nRefs, owners - 1);
  EXPECT_GE(nil->nRefs, 2) << "the next owner's release must not be the last";
  EXPECT_STREQ(nil->data(), "");
  EXPECT_EQ(nil->nDataLength, 0);
}

// One that were counted too often or not at all, in any of these, would run over or out in the end.
TEST(StringManager, HasAsManyOwnersOfItsEmptyTextAsThereAreEmptyStrings) {
  CString witness;
  const auto owners = [&] { return HeaderOf(witness).owners; };
  const int32_t before = owners();
  {
    CString moved("text");
    const CString target(std::move(moved));
    EXPECT_EQ(owners(), before + 1);
    moved = "again";
    EXPECT_EQ(owners(), before);
    moved.Empty();
    CString copy(moved);
    copy = witness;
    copy += "part";
    copy = copy.Left(0);
    copy = CString("x").Mid(1);
    CString(nullptr, 3).Append("", 0);
    CArray<CString, CString&> list;
    for (int i = 0; i < 40; ++i) list.Add(CString());
    EXPECT_EQ(owners(), before + 42);
    list.RemoveAt(7);
    EXPECT_EQ(owners(), before + 41);
  }
  EXPECT_EQ(owners(), before);
}

TEST(StringManager, TakesALockedTextBackFromItsOnlyOwner) {
  // A host's string says so with a negative number of owners.
  CountingManager manager;
  CStringData locked = {&manager, 0, 0, -1};
  locked.Release();
  EXPECT_EQ(manager.freed, 1);
}

TEST(StringManager, IsItsOwnCopy) {
  EXPECT_EQ(Manager().Clone(), &Manager());
}
