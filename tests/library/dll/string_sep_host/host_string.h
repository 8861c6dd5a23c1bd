// SPDX-License-Identifier: MIT
// The least of a framework's narrow string: its names, the bytes of its objects and of the header
// before a text, and its documented rules for sharing texts. The memory comes from managers that
// count, so that it shows when a text goes to the wrong one, or to none.
#pragma once

#include "tests/library/dll/string_sep_host/system.h"

namespace ATL {

struct CStringData;

/// The order of the operations is documented; the library calls them by their place.
class IAtlStringMgr {
 public:
  virtual CStringData* Allocate(int length, int characterSize) = 0;
  virtual void Free(CStringData* data) = 0;
  virtual CStringData* Reallocate(CStringData* data, int length, int characterSize) = 0;
  virtual CStringData* GetNilString() = 0;
  virtual IAtlStringMgr* Clone() = 0;
};

struct CStringData {
  IAtlStringMgr* manager;
  int length;
  int room;
  long owners;  ///< negative while the text is locked

  char* Text() { return reinterpret_cast<char*>(this + 1); }
  void Release() {
    if (--owners <= 0) manager->Free(this);
  }
};
static_assert(sizeof(CStringData) == 24, "the text follows at once");

/// Counts what it gives and what comes back.
class CountingManager final : public IAtlStringMgr {
 public:
  constexpr explicit CountingManager(CountingManager* forCopies) : forCopies(forCopies) {}

  CStringData* Allocate(int length, int characterSize) override {
    auto* data = static_cast<CStringData*>(
        TakeMemory(sizeof(CStringData) +
                   static_cast<size_t>(length + 1) * static_cast<size_t>(characterSize)));
    *data = {this, 0, length, 1};
    ++given;
    return data;
  }

  void Free(CStringData* data) override {
    if (data->manager != this || data == &nil.data) {
      ++strangers;
      return;
    }
    // Who looks at it later finds nothing that works.
    for (int i = 0; i < data->room; ++i) data->Text()[i] = '\xDD';
    *data = {nullptr, -1, -1, -1};
    GiveMemory(data);
    ++returned;
  }

  CStringData* Reallocate(CStringData*, int, int) override { return nullptr; }

  CStringData* GetNilString() override {
    nil.data.manager = this;
    ++nil.data.owners;
    return &nil.data;
  }

  IAtlStringMgr* Clone() override { return forCopies == nullptr ? this : forCopies; }

  int64_t InUse() const { return given - returned; }
  long NilOwners() const { return nil.data.owners; }

  int64_t given = 0;
  int64_t returned = 0;
  int64_t strangers = 0;  ///< texts of others, or the empty one, that came here to be freed

 private:
  struct Nil {
    CStringData data;
    char text[8];
  };

  CountingManager* forCopies;  ///< null: copies share a text
  Nil nil = {{nullptr, 0, 0, 2}, {}};
};

template <typename BaseType>
class ChTraitsCRT {};

template <typename BaseType, class StringTraits>
class CStringT {
 public:
  CStringT(const BaseType* text, IAtlStringMgr& manager) {
    const int length = static_cast<int>(TextLength(text));
    CStringData* data =
        length == 0 ? manager.GetNilString() : manager.Allocate(length, sizeof(BaseType));
    for (int i = 0; i < length; ++i) data->Text()[i] = text[i];
    data->length = length;
    text_ = data->Text();
  }

  /// Shares the text when its manager says that copies may, and it is not locked.
  CStringT(const CStringT& other) {
    CStringData* data = other.Data();
    IAtlStringMgr* manager = data->manager->Clone();
    if (data->owners >= 0 && manager == data->manager) {
      ++data->owners;
      text_ = other.text_;
      return;
    }
    CStringData* copy = manager->Allocate(data->length, sizeof(BaseType));
    for (int i = 0; i <= data->length; ++i) copy->Text()[i] = data->Text()[i];
    copy->length = data->length;
    text_ = copy->Text();
  }

  CStringT(CStringT&& other, IAtlStringMgr& managerOfTheRest) : text_(other.text_) {
    other.text_ = managerOfTheRest.GetNilString()->Text();
  }

  CStringT& operator=(const CStringT&) = delete;
  ~CStringT() { Data()->Release(); }

  CStringData* Data() const { return reinterpret_cast<CStringData*>(text_) - 1; }
  const BaseType* Text() const { return text_; }
  bool operator==(const BaseType* text) const {
    return SameText(text_, text) && Data()->length == static_cast<int>(TextLength(text));
  }

  /// Hands a buffer out that no other string may share from now on. Only for a text of its own.
  void LockBuffer() { Data()->owners = -1; }

  /// Writes one character, after making the text this string's own, by its manager's rules.
  void SetAt(int index, BaseType character) {
    CStringData* old = Data();
    if (old->owners > 1) {
      CStringData* own = old->manager->Clone()->Allocate(old->length, sizeof(BaseType));
      for (int i = 0; i <= old->length; ++i) own->Text()[i] = old->Text()[i];
      own->length = old->length;
      old->Release();
      text_ = own->Text();
    }
    text_[index] = character;
  }

  /// Makes room for a longer text and appends to it. Only for a text of its own.
  void Append(const BaseType* text) {
    const int length = Data()->length;
    const int added = static_cast<int>(TextLength(text));
    CStringData* grown = Data()->manager->Reallocate(Data(), length + added, sizeof(BaseType));
    for (int i = 0; i <= added; ++i) grown->Text()[length + i] = text[i];
    grown->length = length + added;
    text_ = grown->Text();
  }

 private:
  BaseType* text_;
};

}  // namespace ATL

template <typename CharType, class StringIterator = ATL::ChTraitsCRT<CharType>>
class StrTraitMFC_DLL {};

/// What a host without UNICODE calls its strings.
using CString = ATL::CStringT<char, StrTraitMFC_DLL<char>>;
static_assert(sizeof(CString) == 8, "one pointer to the text");
