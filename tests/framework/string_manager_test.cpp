// SPDX-License-Identifier: MIT
#include "framework/base/string_manager.h"

#include <gtest/gtest.h>

#include <cstring>

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

TEST(StringManager, NeverGivesItsEmptyTextAway) {
  CStringData* nil = Manager().GetNilString();
  const int owners = nil->nRefs;
  for (int i = 0; i < 100; ++i) nil->Release();
  nil->AddRef();
  EXPECT_EQ(nil->nRefs, owners);
  EXPECT_STREQ(nil->data(), "");
  EXPECT_EQ(nil->nDataLength, 0);
  EXPECT_EQ(Manager().GetNilString(), nil);
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
