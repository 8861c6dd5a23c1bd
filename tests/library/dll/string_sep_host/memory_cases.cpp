// SPDX-License-Identifier: MIT
// main.cpp checks after each case that nothing is left, neither with the host's managers nor on
// the heaps; what is checked here happens in between.
#include "tests/library/dll/string_sep_host/cases.h"

namespace {

void TextsGivenAreGivenBackAtOnce() {
  CStringSep fields;
  fields.Set(Text("a,b,c"), Text(","), 0);
  EXPECT(manager.InUse() == 0);
  fields.Set(Text("a,b,c"), Text(""), 0);
  EXPECT(manager.InUse() == 0);
  fields.Set(Text(""), Text("never used"), 0);
  EXPECT(manager.InUse() == 0);
  fields.Set(Text("one field"), Text(";"), 0);
  EXPECT(fields.Same(0, Text("ONE FIELD")) == 1);
  EXPECT(fields.Same(0, Text("another")) == 0);
  EXPECT(fields.Same(1, Text("outside")) == 0);
  EXPECT(manager.InUse() == 0);
}

void TextsThatTheHostKeepsStayItsOwn() {
  const CString line = Text(" a , b ");
  const CString separator = Text(",");
  const char* const place = line.Text();
  CStringSep fields;
  for (int i = 0; i < 3; ++i) {
    fields.Set(line, separator, 0);
    EXPECT(fields.Same(0, line) == 0);
    EXPECT(line.Data()->owners == 1);
    EXPECT(separator.Data()->owners == 1);
  }
  EXPECT(line.Text() == place);
  EXPECT(line == " a , b ");
  EXPECT(separator == ",");
}

void FieldsAreNoPartOfTheHostsText() {
  CStringSep fields;
  {
    CString line = Text("whole");
    fields.Set(line, Text(","), 0);
    line.SetAt(0, 'W');
  }
  EXPECT(manager.InUse() == 0);
  EXPECT(fields.GetParam(0) == "whole");
  EXPECT(fields.GetParam(0).Data()->manager != &manager);
}

// A manager may let another one make the copies; each text then goes back to its own.
void CopiesGoBackToTheManagerThatMadeThem() {
  const CString line("x,y", otherManager);
  const int64_t given = manager.given;
  CStringSep fields;
  fields.Set(line, CString(",", otherManager), 0);
  EXPECT(manager.given > given);
  EXPECT(manager.InUse() == 0);
  EXPECT(otherManager.InUse() == 1);
  EXPECT(fields.Same(1, CString("Y", otherManager)) == 1);
  EXPECT(otherManager.InUse() == 1);
}

// A string that is moved into the call brings its locked buffer along.
void LockedTextsAreGivenBack() {
  CStringSep fields;
  CString line = Text("l,m");
  line.LockBuffer();
  fields.Set(CString(static_cast<CString&&>(line), manager), Text(","), 0);
  EXPECT(manager.InUse() == 0);
  EXPECT(fields.GetParam(1) == "m");
  CString same = Text("L");
  same.LockBuffer();
  EXPECT(fields.Same(0, CString(static_cast<CString&&>(same), manager)) == 1);
  EXPECT(manager.InUse() == 0);
}

void EmptyTextsOfTheHostKeepTheirOwners() {
  CStringSep fields;
  const long owners = manager.NilOwners();
  fields.Set(Text(""), Text(""), 0);
  fields.Set(Text("a"), Text(""), 0);
  EXPECT(fields.Same(0, Text("")) == 0);
  EXPECT(manager.NilOwners() == owners);
}

// All empty texts of the library are one, and a host counts its owners as it does for every text.
void EmptyTextsOfTheLibraryKeepTheirOwners() {
  CStringSep fields;
  const CString empty = fields.GetParam(0);
  const long owners = empty.Data()->owners;
  for (int i = 0; i < 100; ++i) {
    const CString another = fields.GetParam(i);
    EXPECT(another.Data() == empty.Data());
    EXPECT(empty.Data()->owners == owners + 1);
  }
  fields.Set(fields.GetParam(0), fields.GetParam(0), 0);
  EXPECT(fields.Same(0, fields.GetParam(0)) == 0);
  fields.Set(Text("a,,b"), Text(","), 0);
  EXPECT(fields.Same(1, fields.GetParam(1)) == 1);
  fields.Set(Text(""), Text(""), 0);
  EXPECT(empty.Data()->owners == owners);
  // A host that empties a string of the library takes another owner for what is there instead.
  EXPECT(empty.Data()->manager->GetNilString() == empty.Data());
  EXPECT(empty.Data()->owners == owners + 1);
  empty.Data()->Release();
}

void ReturnedTextsOutliveTheObject() {
  alignas(CStringSep) char storage[sizeof(CStringSep)];
  auto* fields = new (storage) CStringSep;
  fields->Set(Text("first,second"), Text(","), 0);
  const CString first = fields->GetParam(0);
  const CString copy(first);
  EXPECT(copy.Text() == first.Text());
  fields->Set(Text("other"), Text(","), 0);
  const CString empty = fields->GetParam(7);
  fields->~CStringSep();
  EXPECT(first == "first");
  EXPECT(first.Data()->owners == 2);
  EXPECT(empty == "");
}

void ReturnedTextsAreTheHostsToChange() {
  CStringSep fields;
  fields.Set(Text("field"), Text(","), 0);
  CString own = fields.GetParam(0);
  own.SetAt(0, 'F');
  EXPECT(own.Data()->owners == 1);
  own.Append(" and a good deal more than there was room for");
  EXPECT(own == "Field and a good deal more than there was room for");
  EXPECT(fields.GetParam(0) == "field");
}

void ReturnedTextsMayBeGivenBackIn() {
  CStringSep fields;
  fields.Set(Text("a;b,x,;"), Text(","), 0);
  EXPECT(fields.Same(1, fields.GetParam(1)) == 1);
  fields.Set(fields.GetParam(0), fields.GetParam(2), 0);
  EXPECT(fields.GetCount() == 2);
  EXPECT(fields.GetParam(0) == "a");
  EXPECT(fields.GetParam(1) == "b");
}

void NothingGathersInManyCalls() {
  CStringSep fields;
  const int64_t inUse = manager.InUse();
  const CString kept = Text("kept,text");
  for (int i = 0; i < 1000; ++i) {
    fields.Set(i % 2 == 0 ? kept : Text("p,q,r"), Text(","), 0);
    EXPECT(fields.GetParam(i % 3 - 1).Data() != nullptr);
    EXPECT(fields.Same(0, Text("P")) == i % 2);
  }
  EXPECT(manager.InUse() == inUse + 1);
}

}  // namespace

const Case memoryCases[] = {
    {"texts given are given back at once", TextsGivenAreGivenBackAtOnce},
    {"texts that the host keeps stay its own", TextsThatTheHostKeepsStayItsOwn},
    {"fields are no part of the host's text", FieldsAreNoPartOfTheHostsText},
    {"copies go back to the manager that made them", CopiesGoBackToTheManagerThatMadeThem},
    {"locked texts are given back", LockedTextsAreGivenBack},
    {"empty texts of the host keep their owners", EmptyTextsOfTheHostKeepTheirOwners},
    {"empty texts of the library keep their owners", EmptyTextsOfTheLibraryKeepTheirOwners},
    {"returned texts outlive the object", ReturnedTextsOutliveTheObject},
    {"returned texts are the host's to change", ReturnedTextsAreTheHostsToChange},
    {"returned texts may be given back in", ReturnedTextsMayBeGivenBackIn},
    {"nothing gathers in many calls", NothingGathersInManyCalls},
    {nullptr, nullptr},
};
