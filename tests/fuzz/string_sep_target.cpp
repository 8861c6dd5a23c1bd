// SPDX-License-Identifier: MIT
#include "core/util/string_sep.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/targets.h"
#include "tests/fuzz/text_model.h"

namespace {

CString Made(const std::string& text) {
  return CString(text.data(), static_cast<int>(text.size()));
}

std::string Bytes(const CString& text) {
  return std::string(text.GetString(), static_cast<size_t>(text.GetLength()));
}

void CheckField(CStringSep& separated, int32_t index, const std::string& field,
                const std::string& other) {
  RequireSame(Bytes(separated.GetParam(index)), field, "a field");
  Require(SameNumber(separated.atof(index, 1.5), ModelDouble(field)), "atof of a field");
  Require(separated.atoi(index, 7) == ModelInt(field), "atoi of a field");
  Require(separated.atox(index, 7) == ModelInt(field), "atox of a field");
  Require((separated.Same(index, Made(other)) != 0) == ModelSame(field, other), "Same of a field");
  Require(separated.Same(index, Made(field)) == 1, "a field is the same as itself");
}

void CheckOutside(CStringSep& separated, int32_t index) {
  RequireSame(Bytes(separated.GetParam(index)), "", "a field outside");
  Require(separated.atof(index, 1.5) == 1.5, "atof outside");
  Require(separated.atoi(index, 7) == 7, "atoi outside");
  Require(separated.atox(index, -7) == -7, "atox outside");
  Require(separated.Same(index, "") == 0, "Same outside");
}

}  // namespace

void FuzzStringSep(FuzzInput input) {
  const std::string separator = input.Text(input.Choice(4));
  const int32_t anyIndex = input.Int32();
  const uint32_t flags = input.Byte();
  const std::string other = input.Text(input.Choice(8));
  const std::string text = input.Rest();
  const std::vector<std::string> fields = ModelFields(text, separator);
  const auto count = static_cast<int32_t>(fields.size());

  CStringSep separated;
  separated.Set("fields,of,an,earlier,line", ",", 0);
  separated.Set(Made(text), Made(separator), flags);
  Require(separated.GetCount() == count, "the number of fields");
  for (int32_t i = 0; i < count; ++i) {
    CheckField(separated, i, fields[static_cast<size_t>(i)], other);
  }
  CheckOutside(separated, -1);
  CheckOutside(separated, count);
  if (anyIndex < 0 || anyIndex >= count) CheckOutside(separated, anyIndex);
}
