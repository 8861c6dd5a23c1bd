// SPDX-License-Identifier: MIT
#include "core/util/string_sep.h"

#include <new>

#include "core/util/number_text.h"
#include "core/util/text_span.h"

namespace {

CString TrimmedPiece(const char* first, const char* last) {
  const TextSpan piece = Trimmed({first, last});
  return CString(piece.first, static_cast<int>(piece.last - piece.first));
}

}  // namespace

CStringSep::CStringSep() = default;

CStringSep::~CStringSep() = default;

void CStringSep::Set(CString line, CString separator, uint32_t /*flags*/) {
  fields.RemoveAll();
  // An exception of this library must not reach a host.
  try {
    Split(line, separator.IsEmpty() ? "," : separator.GetString());
  } catch (const std::bad_alloc&) {
    fields.RemoveAll();
  }
}

void CStringSep::Split(const CString& line, const char* separator) {
  int start = 0;
  while (start < line.GetLength()) {
    const int found = line.Find(separator, start);
    const int end = found < 0 ? line.GetLength() : found;
    fields.Add(TrimmedPiece(line.GetString() + start, line.GetString() + end));
    // One character is skipped, for every length of the separator.
    start = end + 1;
  }
}

int64_t CStringSep::GetCount() {
  return fields.GetSize();
}

CString CStringSep::GetParam(int32_t index) {
  return Has(index) ? fields[index] : CString();
}

int32_t CStringSep::Same(int32_t index, CString other) {
  return Has(index) && fields[index].CompareNoCase(other) == 0 ? 1 : 0;
}

double CStringSep::atof(int32_t index, double fallback) {
  return Has(index) ? TextToDouble(fields[index]) : fallback;
}

int32_t CStringSep::atoi(int32_t index, int32_t fallback) {
  return Has(index) ? TextToInt(fields[index]) : fallback;
}

int32_t CStringSep::atox(int32_t index, int32_t fallback) {
  return Has(index) ? TextToInt(fields[index]) : fallback;
}
