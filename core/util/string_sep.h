// SPDX-License-Identifier: MIT
// CStringSep: splits one line of text into fields and hands them out by index. Exported from the
// library: members, signatures and the object's contents are its interface and stay as they are.
// Hosts see it through include/velquin_util.h. Owned by whoever declares it; not locked: one thread
// at a time. Throws nothing.
#pragma once

#include <cstdint>

#include "framework/base/array.h"
#include "framework/base/cstring.h"

class CStringSep {
 public:
  CStringSep();
  ~CStringSep();

  /// Replaces the fields by the split of a text. Every field loses its white space at both ends.
  /// Without memory for the fields there are none.
  /// Empty fields are kept, but a separator at the very end makes no empty last field.
  /// @param line may be empty: no fields
  /// @param separator empty means ","; of a longer one only the first character is skipped, so the
  ///        rest of it begins the next field
  /// @param flags ignored
  void Set(CString line, CString separator, uint32_t flags);

  /// @return the number of fields.
  int64_t GetCount();

  /// @param index from 0 @return the field, or an empty text outside the range.
  CString GetParam(int32_t index);

  /// @return 1 when the field equals `other` without regard to case, else 0; 0 outside the range.
  int32_t Same(int32_t index, CString other);

  /// @return the field as a number, 0 when it is none, `fallback` outside the range of fields.
  double atof(int32_t index, double fallback);
  int32_t atoi(int32_t index, int32_t fallback);
  /// Despite its name decimal, as atoi: "1F" gives 1 and "0x10" gives 0.
  int32_t atox(int32_t index, int32_t fallback);

 private:
  void Split(const CString& line, const char* separator);
  bool Has(int32_t index) const { return index >= 0 && index < fields.GetSize(); }

  CString text;  // part of the object's contents; no operation uses it
  CArray<CString, CString&> fields;
};

static_assert(sizeof(CStringSep) == 48, "a string, then an array");
