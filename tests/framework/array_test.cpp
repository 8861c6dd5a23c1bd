// SPDX-License-Identifier: MIT
#include "framework/base/array.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "framework/base/cstring.h"

namespace {

using testing::ElementsAre;

// Counts the objects that live, so that one destroyed twice or never is seen.
struct Counted {
  static inline int alive = 0;
  int number;

  explicit Counted(int n) : number(n) { ++alive; }
  Counted(const Counted& other) : number(other.number) { ++alive; }
  Counted(Counted&& other) noexcept : number(other.number) { ++alive; }
  Counted& operator=(const Counted&) = default;
  Counted& operator=(Counted&&) = default;
  ~Counted() { --alive; }
};

// The object as the documented library lays it out.
struct Layout {
  void* virtualTable;
  void* data;
  int64_t size;
  int64_t maxSize;
  int64_t growBy;
};

template <class Array>
Layout LayoutOf(const Array& array) {
  static_assert(sizeof(Array) == sizeof(Layout));
  Layout layout;
  std::memcpy(&layout, static_cast<const void*>(&array), sizeof layout);
  return layout;
}

template <class Array>
std::vector<int> Contents(const Array& array) {
  std::vector<int> contents;
  for (ptrdiff_t i = 0; i < array.GetSize(); ++i) contents.push_back(array[i]);
  return contents;
}

}  // namespace

TEST(ArrayLayout, Is40BytesVirtualTableDataSizeMaximumGrowBy) {
  CArray<int, int> array;
  const Layout empty = LayoutOf(array);
  EXPECT_NE(empty.virtualTable, nullptr);
  EXPECT_EQ(empty.data, nullptr);
  EXPECT_EQ(empty.size, 0);
  EXPECT_EQ(empty.maxSize, 0);
  EXPECT_EQ(empty.growBy, 0);

  array.Add(7);
  array.Add(8);
  const Layout filled = LayoutOf(array);
  EXPECT_EQ(filled.virtualTable, empty.virtualTable);
  EXPECT_EQ(filled.data, &array[0]);
  EXPECT_EQ(filled.size, 2);
  EXPECT_GE(filled.maxSize, 2);
  EXPECT_EQ(filled.growBy, 0);

  array.RemoveAll();
  EXPECT_EQ(LayoutOf(array).data, nullptr);
  EXPECT_EQ(LayoutOf(array).maxSize, 0);
}

TEST(ArrayLayout, HoldsStringsAsPointersToTheirTexts) {
  CArray<CString, CString&> array;
  CString first("first");
  CString second("second");
  array.Add(first);
  array.Add(second);
  const auto* texts = static_cast<const char* const*>(LayoutOf(array).data);
  EXPECT_STREQ(texts[0], "first");
  EXPECT_STREQ(texts[1], "second");
}

TEST(Array, IsEmptyAtFirst) {
  const CArray<int, int> array;
  EXPECT_EQ(array.GetSize(), 0);
  EXPECT_EQ(array.GetCount(), 0);
  EXPECT_TRUE(array.IsEmpty());
}

TEST(Array, KeepsWhatIsAddedInOrder) {
  CArray<int, int> array;
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(array.Add(i * i), i);
  ASSERT_EQ(array.GetSize(), 1000);
  EXPECT_EQ(array.GetCount(), 1000);
  EXPECT_FALSE(array.IsEmpty());
  for (int i = 0; i < 1000; ++i) ASSERT_EQ(array.GetAt(i), i * i);
}

TEST(Array, LetsElementsBeReplaced) {
  CArray<int, int> array;
  array.Add(1);
  array.Add(2);
  array[0] = 10;
  array.ElementAt(1) = 20;
  EXPECT_THAT(Contents(array), ElementsAre(10, 20));
}

TEST(Array, ClosesTheGapOfARemovedElement) {
  CArray<int, int> array;
  for (int i = 0; i < 5; ++i) array.Add(i);
  array.RemoveAt(0);
  array.RemoveAt(3);
  array.RemoveAt(1);
  EXPECT_THAT(Contents(array), ElementsAre(1, 3));
}

TEST(Array, ThrowsAtAnInvalidIndex) {
  CArray<int, int> array;
  EXPECT_THROW(array.GetAt(0), CInvalidArgException);
  array.Add(1);
  array.Add(2);
  const CArray<int, int>& constant = array;
  for (const ptrdiff_t index : {-1, 2, 3}) {
    EXPECT_THROW(array.GetAt(index), CInvalidArgException) << index;
    EXPECT_THROW(array.ElementAt(index), CInvalidArgException) << index;
    EXPECT_THROW(array[index], CInvalidArgException) << index;
    EXPECT_THROW(constant[index], CInvalidArgException) << index;
    EXPECT_THROW(array.RemoveAt(index), CInvalidArgException) << index;
  }
  EXPECT_THAT(Contents(array), ElementsAre(1, 2));
}

TEST(Array, DestroysEveryElementOnce) {
  Counted::alive = 0;
  {
    CArray<Counted> array;
    for (int i = 0; i < 100; ++i) array.Add(Counted(i));
    EXPECT_EQ(Counted::alive, 100);
    array.RemoveAt(50);
    EXPECT_EQ(Counted::alive, 99);
    EXPECT_EQ(array[50].number, 51);
    array.RemoveAll();
    EXPECT_EQ(Counted::alive, 0);
    array.Add(Counted(7));
    EXPECT_EQ(array[0].number, 7);
  }
  EXPECT_EQ(Counted::alive, 0);
}

TEST(Array, CanBeUsedAgainAfterRemoveAll) {
  CArray<int, int> array;
  array.Add(1);
  array.RemoveAll();
  array.RemoveAll();
  EXPECT_TRUE(array.IsEmpty());
  EXPECT_EQ(array.Add(2), 0);
  EXPECT_THAT(Contents(array), ElementsAre(2));
}

// Growing moves the elements away from under a reference into the array.
TEST(Array, AddsACopyOfItsOwnElementEvenWhenItGrows) {
  CArray<std::string> array;
  const std::string first = "longer than fits into the string object itself";
  array.Add(std::string(first));
  for (int i = 0; i < 200; ++i) array.Add(static_cast<const std::string&>(array[0]));
  ASSERT_EQ(array.GetSize(), 201);
  for (int i = 0; i < 201; ++i) ASSERT_EQ(array[i], first);
}
