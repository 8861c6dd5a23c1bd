// SPDX-License-Identifier: MIT
#include "framework/base/cstring.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <new>

#include "framework/base/exceptions.h"
#include "framework/base/format.h"
#include "framework/base/string_manager.h"
#include "framework/base/text_language.h"
#include "platform/text_class.h"
#include "platform/user_notice.h"

namespace {

bool IsSpace(char c) {
  return c == ' ' || (c >= '\t' && c <= '\r');
}

// Part of a two-byte character, or at least not ASCII.
bool IsDoubleByte(char c) {
  return static_cast<unsigned char>(c) >= 0x80;
}

int LowerCase(char c) {
  const int code = static_cast<unsigned char>(c);
  return code >= 'A' && code <= 'Z' ? code - 'A' + 'a' : code;
}

int Length(const char* text) {
  return text == nullptr ? 0 : static_cast<int>(std::strlen(text));
}

bool IsShared(CStringData* data) {
  return std::atomic_ref<int32_t>(data->nRefs).load(std::memory_order_acquire) > 1;
}

}  // namespace

CString::CString() {
  Attach(AfxGetStringManager()->GetNilString());
}

CString::CString(const char* text) : CString(text, Length(text)) {}

CString::CString(const char* text, int length) {
  if (text == nullptr || length <= 0) {
    Attach(AfxGetStringManager()->GetNilString());
    return;
  }
  CStringData* data = AfxGetStringManager()->Allocate(length, sizeof(char));
  if (data == nullptr) throw std::bad_alloc();
  std::memcpy(data->data(), text, static_cast<size_t>(length));
  Attach(data);
  SetLength(length);
}

CString::CString(const CString& other) : m_pszData(other.m_pszData) {
  Header()->AddRef();
}

CString::CString(CString&& other) noexcept : m_pszData(other.m_pszData) {
  other.Attach(AfxGetStringManager()->GetNilString());
}

CString::~CString() {
  Header()->Release();
}

CString& CString::operator=(const CString& other) {
  other.Header()->AddRef();
  Header()->Release();
  m_pszData = other.m_pszData;
  return *this;
}

CString& CString::operator=(CString&& other) noexcept {
  std::swap(m_pszData, other.m_pszData);
  return *this;
}

CString& CString::operator=(const char* text) {
  return *this = CString(text);
}

void CString::Empty() {
  *this = CString();
}

char CString::GetAt(int index) const {
  if (index < 0 || index > GetLength()) AfxThrowInvalidArgException();
  return m_pszData[index];
}

CString& CString::operator+=(const CString& other) {
  // Held separately: other may be this string.
  const CString part(other);
  Append(part, part.GetLength());
  return *this;
}

CString& CString::operator+=(const char* text) {
  return *this += CString(text);
}

void CString::Append(const char* text, int length) {
  if (text == nullptr || length <= 0) return;
  const int before = GetLength();
  // A part of this same text moves with it.
  const bool own = text >= m_pszData && text <= m_pszData + before;
  const ptrdiff_t offset = own ? text - m_pszData : 0;
  char* target = PrepareWrite(before + length);
  std::memcpy(target + before, own ? target + offset : text, static_cast<size_t>(length));
  SetLength(before + length);
}

CString CString::Left(int count) const {
  return Mid(0, count);
}

CString CString::Mid(int first) const {
  return Mid(first, GetLength());
}

CString CString::Mid(int first, int count) const {
  first = std::clamp(first, 0, GetLength());
  count = std::clamp(count, 0, GetLength() - first);
  if (count == GetLength()) return *this;
  return CString(m_pszData + first, count);
}

int CString::Find(const char* part, int start) const {
  if (part == nullptr || start < 0 || start > GetLength()) return -1;
  const bool oneCharacter = part[0] != '\0' && part[1] == '\0';
  const char* found =
      oneCharacter ? std::strchr(m_pszData + start, part[0]) : std::strstr(m_pszData + start, part);
  if (found == nullptr) return -1;
  // The match may be the second byte of a double-byte character.
  if (found > m_pszData + start && IsDoubleByte(found[-1])) {
    found = platform::FindText(m_pszData + start, part);
  }
  return found == nullptr ? -1 : static_cast<int>(found - m_pszData);
}

int CString::Compare(const char* text) const {
  return std::strcmp(m_pszData, text == nullptr ? "" : text);
}

int CString::CompareNoCase(const char* text) const {
  const char* a = m_pszData;
  const char* b = text == nullptr ? "" : text;
  while (*a != '\0' && LowerCase(*a) == LowerCase(*b)) {
    if (IsDoubleByte(*a)) return platform::CompareTextNoCase(a, b);
    ++a;
    ++b;
  }
  if (IsDoubleByte(*a) || IsDoubleByte(*b)) return platform::CompareTextNoCase(a, b);
  return LowerCase(*a) - LowerCase(*b);
}

CString& CString::Trim() {
  int first = 0;
  int end = GetLength();
  while (first < end && IsSpace(m_pszData[first])) ++first;
  while (end > first && IsSpace(m_pszData[end - 1])) --end;
  if (end - first != GetLength()) *this = Mid(first, end - first);
  return *this;
}

int CString::Remove(char character) {
  const int before = GetLength();
  if (std::memchr(m_pszData, character, static_cast<size_t>(before)) == nullptr) return 0;
  char* text = PrepareWrite(before);
  const char* end = std::remove(text, text + before, character);
  SetLength(static_cast<int>(end - text));
  return before - GetLength();
}

void CString::Format(const char* format, ...) {
  va_list arguments;
  va_start(arguments, format);
  FormatV(format, arguments);
  va_end(arguments);
}

void CString::FormatV(const char* format, va_list arguments) {
  // Built separately, since the old text may be one of the arguments.
  CString result;
  AppendFormatted(result, format, arguments);
  *this = std::move(result);
}

BOOL CString::LoadString(UINT id) {
  char text[512];
  const int length = platform::LoadStringResource(AfxTextResource(id), text, sizeof text);
  *this = CString(text, length);
  return length > 0;
}

char* CString::PrepareWrite(int length) {
  CStringData* old = Header();
  if (!IsShared(old) && length <= old->nAllocLength) return m_pszData;
  // Half as much again, so that a text built piece by piece is not copied for every piece.
  const int room = std::max(length, GetLength() == 0 ? length : length + length / 2);
  CStringData* data = AfxGetStringManager()->Allocate(room, sizeof(char));
  if (data == nullptr) throw std::bad_alloc();
  const int kept = std::min(length, old->nDataLength);
  std::memcpy(data->data(), old->data(), static_cast<size_t>(kept));
  data->data()[kept] = '\0';
  data->nDataLength = kept;
  old->Release();
  Attach(data);
  return m_pszData;
}

void CString::SetLength(int length) {
  Header()->nDataLength = length;
  m_pszData[length] = '\0';
}

CString operator+(const CString& first, const CString& second) {
  return CString(first) += second;
}

CString operator+(const CString& first, const char* second) {
  return CString(first) += second;
}

CString operator+(const char* first, const CString& second) {
  return CString(first) += second;
}
