// SPDX-License-Identifier: MIT
#include <limits.h>

#include "tests/library/dll/string_sep_host/cases.h"

namespace {

// An object in the host's own storage, between bytes that are not its.
class Fields {
 public:
  Fields() {
    for (int i = 0; i < kAround; ++i) {
      before[i] = '\x5A';
      after[i] = '\x5A';
    }
  }
  Fields(const char* line, const char* separator) : Fields() {
    fields.Set(Text(line), Text(separator), 0);
  }
  ~Fields() {
    for (const char byte : before) EXPECT(byte == '\x5A');
    for (const char byte : after) EXPECT(byte == '\x5A');
  }

  CStringSep* operator->() { return &fields; }

  bool Are(const char* first = nullptr, const char* second = nullptr, const char* third = nullptr) {
    const char* expected[] = {first, second, third, nullptr};
    int count = 0;
    for (; expected[count] != nullptr; ++count) {
      if (!(fields.GetParam(count) == expected[count])) return false;
    }
    return fields.GetCount() == count;
  }

 private:
  static constexpr int kAround = 16;
  char before[kAround];
  CStringSep fields;
  char after[kAround];
};

void HasNoFieldsAtFirst() {
  Fields fields;
  EXPECT(fields.Are());
  EXPECT(fields->GetParam(0) == "");
}

void MakesNoFieldOfAnEmptyText() {
  Fields fields("", ",");
  EXPECT(fields->GetCount() == 0);
  EXPECT(fields->GetParam(0) == "");
  EXPECT(fields->atoi(0, 7) == 7);
  EXPECT(fields->Same(0, Text("")) == 0);
}

void SeparatesAtCommasWhenNoSeparatorIsGiven() {
  EXPECT(Fields("1, 2.5 ,abc", "").Are("1", "2.5", "abc"));
}

void KeepsAnEmptyFieldInside() {
  EXPECT(Fields("a,,b", ",").Are("a", "", "b"));
}

void MakesNoFieldAfterASeparatorAtTheEnd() {
  EXPECT(Fields("a,b,", ",").Are("a", "b"));
  EXPECT(Fields(",", ",").Are(""));
}

void SkipsOneCharacterOfALongSeparator() {
  EXPECT(Fields("a::b", "::").Are("a", ":b"));
}

void TrimsWhiteSpace() {
  EXPECT(Fields("a, b", ", ").Are("a", "b"));
  EXPECT(Fields(" \t\n\v\f\ra b\r\f\v\n\t ,c", ",").Are("a b", "c"));
}

void GivesAnEmptyTextOutsideTheRange() {
  Fields fields("a,b,c", ",");
  EXPECT(fields->GetParam(-1) == "");
  EXPECT(fields->GetParam(3) == "");
  EXPECT(fields->GetParam(INT_MAX) == "");
  EXPECT(fields->GetParam(INT_MIN) == "");
}

void ComparesWithoutRegardToCase() {
  Fields fields("abc,x,y", ",");
  EXPECT(fields->Same(0, Text("ABC")) == 1);
  EXPECT(fields->Same(0, Text("abd")) == 0);
  EXPECT(fields->Same(0, Text("")) == 0);
  EXPECT(fields->Same(5, Text("abc")) == 0);
  EXPECT(fields->Same(-1, Text("abc")) == 0);
}

void ReadsNumbers() {
  Fields fields("-2.5kg,12,abc,99999999999", ",");
  EXPECT(fields->atof(0, 9.0) == -2.5);
  EXPECT(fields->atof(1, 9.0) == 12.0);
  EXPECT(fields->atof(2, 9.0) == 0.0);
  EXPECT(fields->atoi(0, 9) == -2);
  EXPECT(fields->atoi(1, 9) == 12);
  EXPECT(fields->atoi(2, 9) == 0);
  EXPECT(fields->atoi(3, 9) == INT_MAX);
}

void GivesTheFallbackOutsideTheRange() {
  Fields fields("1,2,3", ",");
  EXPECT(fields->atof(3, 1.5) == 1.5);
  EXPECT(fields->atof(-1, -0.5) == -0.5);
  EXPECT(fields->atoi(3, 42) == 42);
  EXPECT(fields->atoi(-1, INT_MIN) == INT_MIN);
  EXPECT(fields->atox(3, 44) == 44);
  EXPECT(fields->atox(-1, -45) == -45);
}

void ReadsHexadecimalAsDecimal() {
  Fields fields("12,ff,1F,0x10", ",");
  EXPECT(fields->atox(0, 9) == 12);
  EXPECT(fields->atox(1, 9) == 0);
  EXPECT(fields->atox(2, 9) == 1);
  EXPECT(fields->atox(3, 9) == 0);
}

void ReplacesAllEarlierFields() {
  Fields fields("a,b,c", ",");
  fields->Set(Text("d"), Text(","), 0);
  EXPECT(fields.Are("d"));
  fields->Set(Text(""), Text(","), 0);
  EXPECT(fields.Are());
}

void IgnoresTheFlags() {
  Fields fields;
  fields->Set(Text("a,B"), Text(","), 0xFFFFFFFFul);
  EXPECT(fields.Are("a", "B"));
}

void TakesAsManyFieldsAsThereAre() {
  constexpr int kFields = 5000;
  char line[2 * kFields];
  for (int i = 0; i < kFields; ++i) {
    line[2 * i] = static_cast<char>('0' + i % 10);
    line[2 * i + 1] = i + 1 < kFields ? ';' : '\0';
  }
  Fields fields(line, ";");
  EXPECT(fields->GetCount() == kFields);
  for (int i = 0; i < kFields; ++i) EXPECT(fields->atoi(i, -1) == i % 10);
}

// As compilers call them that use what is returned instead of what they handed over.
void ReturnsTheObjectAndTheSlot() {
  using Construct = void* (*)(void* object);
  using Destroy = void (*)(void* object);
  using GetParam = void* (*)(void* object, void* slot, int index);
  const auto construct = reinterpret_cast<Construct>(FindExport("??0CStringSep@@QEAA@XZ"));
  const auto destroy = reinterpret_cast<Destroy>(FindExport("??1CStringSep@@QEAA@XZ"));
  const auto getParam = reinterpret_cast<GetParam>(
      FindExport("?GetParam@CStringSep@@QEAA?AV?$CStringT@DV?$StrTraitMFC_DLL@DV?$ChTraitsCRT@D@"
                 "ATL@@@@@ATL@@H@Z"));
  EXPECT(construct != nullptr && destroy != nullptr && getParam != nullptr);
  if (construct == nullptr || destroy == nullptr || getParam == nullptr) return;
  alignas(8) char object[48];
  alignas(8) char slot[8];
  EXPECT(construct(object) == object);
  EXPECT(getParam(object, slot, 0) == slot);
  reinterpret_cast<CString*>(slot)->~CString();
  destroy(object);
}

}  // namespace

const Case resultCases[] = {
    {"has no fields at first", HasNoFieldsAtFirst},
    {"makes no field of an empty text", MakesNoFieldOfAnEmptyText},
    {"separates at commas when no separator is given", SeparatesAtCommasWhenNoSeparatorIsGiven},
    {"keeps an empty field inside", KeepsAnEmptyFieldInside},
    {"makes no field after a separator at the end", MakesNoFieldAfterASeparatorAtTheEnd},
    {"skips one character of a long separator", SkipsOneCharacterOfALongSeparator},
    {"trims white space", TrimsWhiteSpace},
    {"gives an empty text outside the range", GivesAnEmptyTextOutsideTheRange},
    {"compares without regard to case", ComparesWithoutRegardToCase},
    {"reads numbers", ReadsNumbers},
    {"gives the fallback outside the range", GivesTheFallbackOutsideTheRange},
    {"reads hexadecimal as decimal", ReadsHexadecimalAsDecimal},
    {"replaces all earlier fields", ReplacesAllEarlierFields},
    {"ignores the flags", IgnoresTheFlags},
    {"takes as many fields as there are", TakesAsManyFieldsAsThereAre},
    {"returns the object and the slot", ReturnsTheObjectAndTheSlot},
    {nullptr, nullptr},
};
