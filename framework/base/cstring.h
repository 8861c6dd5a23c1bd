// SPDX-License-Identifier: MIT
// CString: the narrow, reference-counted string. Its object and data-header layout are those
// documented for the ANSI DLL build, since strings cross the library's boundary in CStringSep.
// Differences from the documented class: it has only the members that the driver uses; Format
// writes numbers with "." in every locale; white space is ASCII white space. One thread at a time
// uses a string; copies in different threads may share their text.
#pragma once

#include <cstdarg>
#include <cstddef>

#include "framework/base/types.h"

struct CStringData;

/// Allocates and frees the memory of string texts. The order of the operations is part of the
/// layout.
class IAtlStringMgr {
 public:
  virtual CStringData* Allocate(int nAllocLength, int nCharSize) = 0;
  virtual void Free(CStringData* pData) = 0;
  virtual CStringData* Reallocate(CStringData* pData, int nAllocLength, int nCharSize) = 0;
  virtual CStringData* GetNilString() = 0;  ///< the empty text, with one more owner
  virtual IAtlStringMgr* Clone() = 0;

 protected:
  ~IAtlStringMgr() = default;
};

/// The header directly in front of every text.
struct CStringData {
  IAtlStringMgr* pStringMgr;  ///< owner of this memory
  int nDataLength;            ///< characters in use, without the NUL
  int nAllocLength;           ///< characters that fit, without the NUL
  int32_t nRefs;  ///< owners; changed atomically. Below 0: one, which has locked the text

  char* data() { return reinterpret_cast<char*>(this + 1); }
  void AddRef();
  void Release();  ///< returns the memory to its manager after the last owner
};

class CString {
 public:
  CString();
  CString(const char* text);  ///< null counts as empty
  CString(const char* text, int length);
  CString(const CString& other);
  CString(CString&& other) noexcept;
  ~CString();
  CString& operator=(const CString& other);
  CString& operator=(CString&& other) noexcept;
  CString& operator=(const char* text);

  operator const char*() const { return m_pszData; }
  const char* GetString() const { return m_pszData; }
  int GetLength() const { return Header()->nDataLength; }
  bool IsEmpty() const { return GetLength() == 0; }
  void Empty();
  /// @param index 0 to GetLength() (the NUL); throws CInvalidArgException outside.
  char GetAt(int index) const;

  CString& operator+=(const CString& other);
  CString& operator+=(const char* text);
  void Append(const char* text, int length);

  /// Parts are cut to the existing text; negative numbers count as 0.
  CString Left(int count) const;
  CString Mid(int first) const;
  CString Mid(int first, int count) const;

  /// @return the position of the first occurrence at or after `start`, or -1.
  int Find(const char* part, int start = 0) const;
  int Compare(const char* text) const;
  int CompareNoCase(const char* text) const;

  /// Removes white space at both ends.
  CString& Trim();
  /// Removes every occurrence of a character. @return the number removed.
  int Remove(char character);

  /// printf-style; conversions d i u x c s f e g and %%, with flags, width and precision.
  void Format(const char* format, ...) __attribute__((format(printf, 2, 3)));
  void FormatV(const char* format, va_list arguments);

  /// Loads a text from the library's string table. @param id the Japanese text's number; the text
  /// is in the language chosen at load (text_language.h). @return FALSE, and the string is empty,
  /// if there is no such id.
  BOOL LoadString(UINT id);

 private:
  CStringData* Header() const { return reinterpret_cast<CStringData*>(m_pszData) - 1; }
  void Attach(CStringData* data) { m_pszData = data->data(); }
  /// Makes the text unshared and writable, with room for `length` characters.
  char* PrepareWrite(int length);
  void SetLength(int length);

  char* m_pszData;
};

static_assert(sizeof(CStringData) == 24, "the text follows a header of 24 bytes");
static_assert(sizeof(CString) == 8, "a string object is one pointer to its text");

CString operator+(const CString& first, const CString& second);
CString operator+(const CString& first, const char* second);
CString operator+(const char* first, const CString& second);
inline bool operator==(const CString& first, const char* second) {
  return first.Compare(second) == 0;
}
inline bool operator==(const CString& first, const CString& second) {
  return first.Compare(second) == 0;
}
