// SPDX-License-Identifier: MIT
// CStringSep for hosts of Microsoft's compiler: the class's nine members with the calls that this
// compiler makes, which velquin.def exports under the names that it gives them. They differ from
// this compiler's own members in three ways:
//  - the object comes first and the place for a returned object second, and that is returned
//  - who is called destroys the objects that are given by value; they come as pointers to them
//  - a constructor returns its object
//
// A host's string has the bytes of a CString and names its own manager in front of its text, so it
// is taken over as it is: never copied, neither shared nor kept, and given back to that manager.
// That holds for a text whose buffer is locked, too. The fields are copies of pieces, always in
// this library's memory.
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "core/util/string_sep.h"

static_assert(sizeof(CString) == 8 && sizeof(CArray<CString, CString&>) == 40 &&
                  sizeof(CStringSep) == 48 && alignof(CStringSep) == 8,
              "hosts reserve this much for an object");

namespace {

// Destroys what a host gave by value: its place is empty afterwards, and nobody looks there again.
CString Taken(CString* given) {
  CString taken(std::move(*given));
  std::destroy_at(given);
  return taken;
}

}  // namespace

extern "C" {

CStringSep* StringSepConstruct(CStringSep* self) noexcept {
  return new (self) CStringSep;
}

void StringSepDestroy(CStringSep* self) noexcept {
  std::destroy_at(self);
}

void StringSepSet(CStringSep* self, CString* line, CString* separator, uint32_t flags) noexcept {
  self->Set(Taken(line), Taken(separator), flags);
}

int64_t StringSepGetCount(CStringSep* self) noexcept {
  return self->GetCount();
}

CString* StringSepGetParam(CStringSep* self, CString* result, int32_t index) noexcept {
  return new (result) CString(self->GetParam(index));
}

int32_t StringSepSame(CStringSep* self, int32_t index, CString* text) noexcept {
  return self->Same(index, Taken(text));
}

double StringSepAtof(CStringSep* self, int32_t index, double fallback) noexcept {
  return self->atof(index, fallback);
}

int32_t StringSepAtoi(CStringSep* self, int32_t index, int32_t fallback) noexcept {
  return self->atoi(index, fallback);
}

int32_t StringSepAtox(CStringSep* self, int32_t index, int32_t fallback) noexcept {
  return self->atox(index, fallback);
}

}  // extern "C"
