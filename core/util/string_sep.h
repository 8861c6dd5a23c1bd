// SPDX-License-Identifier: MIT
// CStringSep: splits one line of text into fields and returns them by index. Exported from the
// library: members, signatures and object layout are fixed. Hosts see it through
// include/velquin_util.h. Owned by the code that declares it. Not locked: one thread at a time.
// Throws nothing.
#pragma once

#include <cstdint>

#include "framework/base/array.h"
#include "framework/base/cstring.h"

class CStringSep {
 public:
  CStringSep();
  ~CStringSep();

  /// Splits a text; the fields replace the earlier ones. White space is removed from both ends of
  /// every field. If there is no memory for the fields, the object has no fields.
  /// Empty fields are kept, but a separator at the end of the line adds no empty field.
  /// @param line may be empty: no fields
  /// @param separator empty means ","; only the first character of a longer one is skipped, so the
  ///         rest of it begins the next field
  /// @param flags ignored
  void Set(CString line, CString separator, uint32_t flags);

  /// @return the number of fields.
  int64_t GetCount();

  /// @param index from 0 @return the field; an empty text outside the range.
  CString GetParam(int32_t index);

  /// @return 1 if the field equals `other`, case-insensitively, else 0; 0 outside the range.
  int32_t Same(int32_t index, CString other);

  /// @return the field as a number, 0 if it is not one, `fallback` outside the range of fields.
  double atof(int32_t index, double fallback);
  int32_t atoi(int32_t index, int32_t fallback);
  /// Decimal despite its name, like atoi: "1F" gives 1 and "0x10" gives 0.
  int32_t atox(int32_t index, int32_t fallback);

 private:
  void Split(const CString& line, const char* separator);
  bool Has(int32_t index) const { return index >= 0 && index < fields.GetSize(); }

  CString text;  // part of the fixed layout; never used
  CArray<CString, CString&> fields;
};

static_assert(sizeof(CStringSep) == 48, "a string, then an array");
