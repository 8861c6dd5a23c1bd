// SPDX-License-Identifier: MIT
// CArray: the growable array, with the object layout documented for the DLL build (virtual-table
// pointer, data, size, maximum, grow-by). Differences from the documented class: it has only the
// members that the driver uses; a growing array moves its elements instead of copying their bytes.
// Not locked: one thread at a time.
#pragma once

#include <algorithm>
#include <cstddef>
#include <memory>
#include <new>
#include <type_traits>
#include <utility>

#include "framework/base/exceptions.h"

template <class TYPE, class ARG_TYPE = const TYPE&>
class CArray {
 public:
  CArray() = default;
  CArray(const CArray&) = delete;
  CArray& operator=(const CArray&) = delete;
  virtual ~CArray() { RemoveAll(); }

  ptrdiff_t GetSize() const { return m_nSize; }
  ptrdiff_t GetCount() const { return m_nSize; }
  bool IsEmpty() const { return m_nSize == 0; }

  /// Indices run from 0 to GetSize() - 1; any other throws CInvalidArgException.
  const TYPE& GetAt(ptrdiff_t index) const { return m_pData[Checked(index)]; }
  TYPE& ElementAt(ptrdiff_t index) { return m_pData[Checked(index)]; }
  const TYPE& operator[](ptrdiff_t index) const { return GetAt(index); }
  TYPE& operator[](ptrdiff_t index) { return ElementAt(index); }

  /// Appends a copy. @return its index.
  ptrdiff_t Add(ARG_TYPE element) {
    if (m_nSize == m_nMaxSize) {
      // Copied first: the element may be in this array.
      TYPE copy(element);
      Grow();
      new (m_pData + m_nSize) TYPE(std::move(copy));
    } else {
      new (m_pData + m_nSize) TYPE(element);
    }
    return m_nSize++;
  }

  /// Appends an element by moving it. @return its index.
  ptrdiff_t Add(TYPE&& element)
    requires(!std::is_same_v<ARG_TYPE, TYPE>)
  {
    if (m_nSize == m_nMaxSize) Grow();
    new (m_pData + m_nSize) TYPE(std::move(element));
    return m_nSize++;
  }

  void RemoveAt(ptrdiff_t index) {
    Checked(index);
    std::move(m_pData + index + 1, m_pData + m_nSize, m_pData + index);
    std::destroy_at(m_pData + --m_nSize);
  }

  /// Destroys all elements and frees the memory.
  void RemoveAll() {
    std::destroy_n(m_pData, m_nSize);
    ::operator delete(m_pData);
    m_pData = nullptr;
    m_nSize = m_nMaxSize = 0;
  }

 private:
  ptrdiff_t Checked(ptrdiff_t index) const {
    if (index < 0 || index >= m_nSize) AfxThrowInvalidArgException();
    return index;
  }

  void Grow() {
    const ptrdiff_t step = m_nGrowBy > 0 ? m_nGrowBy : std::max<ptrdiff_t>(16, m_nSize);
    const ptrdiff_t room = m_nMaxSize + step;
    auto* grown = static_cast<TYPE*>(::operator new(static_cast<size_t>(room) * sizeof(TYPE)));
    std::uninitialized_move_n(m_pData, m_nSize, grown);
    std::destroy_n(m_pData, m_nSize);
    ::operator delete(m_pData);
    m_pData = grown;
    m_nMaxSize = room;
  }

  TYPE* m_pData = nullptr;
  ptrdiff_t m_nSize = 0;
  ptrdiff_t m_nMaxSize = 0;
  ptrdiff_t m_nGrowBy = 0;
};

static_assert(sizeof(CArray<int, int>) == 40, "the documented array is 40 bytes");
