// SPDX-License-Identifier: MIT
// Strings cross the library's boundary, so their bytes are part of the interface.
#include "tests/framework/cstring_layout.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>

#include "framework/base/string_manager.h"

namespace {

// The place of a virtual function in the table, as the compiler writes it into a pointer to it.
template <typename Member>
int SlotOf(Member member) {
  intptr_t offset;
  std::memcpy(&offset, &member, sizeof offset);
  return static_cast<int>((offset - 1) / static_cast<intptr_t>(sizeof(void*)));
}

// A host's own manager of string memory.
class HostManager final : public IAtlStringMgr {
 public:
  CStringData* Allocate(int, int) override { return nullptr; }
  void Free(CStringData* data) override {
    ++freed;
    lastFreed = data;
  }
  CStringData* Reallocate(CStringData*, int, int) override { return nullptr; }
  CStringData* GetNilString() override { return nullptr; }
  IAtlStringMgr* Clone() override { return this; }

  int freed = 0;
  CStringData* lastFreed = nullptr;
};

// A string of the host: it must not be freed but by the host's manager.
struct HostString {
  CStringData header;
  char text[8];
};

}  // namespace

TEST(StringLayout, IsOnePointerToTheText) {
  EXPECT_EQ(sizeof(CString), 8u);
  const CString string("text");
  EXPECT_EQ(TextPointer(string), string.GetString());
  EXPECT_STREQ(TextPointer(string), "text");
}

TEST(StringLayout, HasAHeaderOf24BytesInFrontOfTheText) {
  EXPECT_EQ(sizeof(CStringData), 24u);
  EXPECT_EQ(offsetof(CStringData, pStringMgr), 0u);
  EXPECT_EQ(offsetof(CStringData, nDataLength), 8u);
  EXPECT_EQ(offsetof(CStringData, nAllocLength), 12u);
  EXPECT_EQ(offsetof(CStringData, nRefs), 16u);

  const CString string("text");
  const StringHeader header = HeaderOf(string);
  EXPECT_EQ(header.manager, AfxGetStringManager());
  EXPECT_EQ(header.length, 4);
  EXPECT_GE(header.room, 4);
  EXPECT_EQ(header.owners, 1);
}

TEST(StringLayout, EndsTheTextWithNul) {
  CString string("text", 2);
  EXPECT_EQ(std::memcmp(TextPointer(string), "te", 3), 0);
  string += "am";
  EXPECT_EQ(std::memcmp(TextPointer(string), "team", 5), 0);
}

TEST(StringLayout, SharesOneEmptyText) {
  const CString one;
  const CString other("");
  CStringData* nil = AfxGetStringManager()->GetNilString();
  EXPECT_EQ(TextPointer(one), nil->data());
  nil->Release();
  EXPECT_EQ(TextPointer(other), TextPointer(one));
  EXPECT_EQ(HeaderOf(one).length, 0);
  EXPECT_EQ(HeaderOf(one).room, 0);
  EXPECT_GT(HeaderOf(one).owners, 1) << "nobody may write into it";
}

TEST(StringManagerLayout, HasItsOperationsInTheDocumentedOrder) {
  EXPECT_EQ(SlotOf(&IAtlStringMgr::Allocate), 0);
  EXPECT_EQ(SlotOf(&IAtlStringMgr::Free), 1);
  EXPECT_EQ(SlotOf(&IAtlStringMgr::Reallocate), 2);
  EXPECT_EQ(SlotOf(&IAtlStringMgr::GetNilString), 3);
  EXPECT_EQ(SlotOf(&IAtlStringMgr::Clone), 4);
}

TEST(StringOfAHost, GoesBackToItsOwnManager) {
  HostManager manager;
  HostString host = {{&manager, 4, 7, 2}, "host"};
  {
    // As if the host had handed over one of its two references.
    CString string;
    const char* text = host.text;
    std::memcpy(static_cast<void*>(&string), &text, sizeof text);
    EXPECT_EQ(string.GetLength(), 4);
    {
      const CString copy(string);
      EXPECT_EQ(TextPointer(copy), host.text);
      EXPECT_EQ(host.header.nRefs, 3);
    }
    EXPECT_EQ(host.header.nRefs, 2);
    string += " and ours";
    EXPECT_STREQ(string, "host and ours");
    EXPECT_EQ(HeaderOf(string).manager, AfxGetStringManager());
    EXPECT_STREQ(host.text, "host");
  }
  EXPECT_EQ(host.header.nRefs, 1);
  EXPECT_EQ(manager.freed, 0);

  host.header.Release();
  EXPECT_EQ(manager.freed, 1);
  EXPECT_EQ(manager.lastFreed, &host.header);
}
