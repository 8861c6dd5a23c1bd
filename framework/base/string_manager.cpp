// SPDX-License-Identifier: MIT
#include "framework/base/string_manager.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

// The owner count of the empty text before any string has it: no release is the last one, and the
// text counts as shared, so that it is never written.
constexpr int kNilOwners = 2;

struct NilString {
  CStringData header;
  char text[8];
};

class HeapStringManager final : public IAtlStringMgr {
 public:
  constexpr HeapStringManager() : nil_{{this, 0, 0, kNilOwners}, {}} {}

  CStringData* Allocate(int nAllocLength, int nCharSize) override {
    auto* data = static_cast<CStringData*>(std::malloc(Size(nAllocLength, nCharSize)));
    if (data == nullptr) return nullptr;
    *data = {this, 0, nAllocLength, 1};
    return data;
  }

  void Free(CStringData* pData) override { std::free(pData); }

  CStringData* Reallocate(CStringData* pData, int nAllocLength, int nCharSize) override {
    auto* data = static_cast<CStringData*>(std::realloc(pData, Size(nAllocLength, nCharSize)));
    if (data != nullptr) data->nAllocLength = nAllocLength;
    return data;
  }

  CStringData* GetNilString() override {
    nil_.header.AddRef();
    return &nil_.header;
  }

  IAtlStringMgr* Clone() override { return this; }

 private:
  static size_t Size(int length, int charSize) {
    return sizeof(CStringData) + (static_cast<size_t>(length) + 1) * static_cast<size_t>(charSize);
  }

  NilString nil_;
};

// Constant-initialised, so that it exists before the first static object with a string in it, and
// trivially destroyed, so that it outlives the last.
constinit HeapStringManager manager;

}  // namespace

IAtlStringMgr* AfxGetStringManager() {
  return &manager;
}

void CStringData::AddRef() {
  std::atomic_ref<int32_t>(nRefs).fetch_add(1, std::memory_order_relaxed);
}

void CStringData::Release() {
  const std::atomic_ref<int32_t> owners(nRefs);
  // The only owner needs no locked instruction: there is no second owner that could add one. A
  // host's text may be locked, with a count below 0: it has one owner, too.
  if (owners.load(std::memory_order_acquire) <= 1 ||
      owners.fetch_sub(1, std::memory_order_acq_rel) == 1) {
    pStringMgr->Free(this);
  }
}
