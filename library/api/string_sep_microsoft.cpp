// SPDX-License-Identifier: MIT
// CStringSep for hosts built with Microsoft's compiler: the nine members of the class with that
// compiler's calling convention. velquin.def exports them under its names. They differ from the
// members that this compiler makes in three ways:
//  - the object is the first argument, and the place for a returned object is the second; the
//    member returns that place
//  - the callee destroys objects that are passed by value; they arrive as pointers
//  - a constructor returns its object
//
// A host's string has the bytes of a CString and names its own manager in front of its text. So the
// library takes it over as it is: it does not copy, share or keep the string, and frees it through
// that manager. That includes a text whose buffer is locked. The fields are copies of pieces,
// always in this library's memory.
#include <cstdint>
#include <memory>
#include <new>
#include <utility>

#include "core/util/string_sep.h"

static_assert(sizeof(CString) == 8 && sizeof(CArray<CString, CString&>) == 40 &&
                  sizeof(CStringSep) == 48 && alignof(CStringSep) == 8,
              "hosts reserve this much for an object");

namespace {

// Destroys an argument that the host passed by value; nothing uses its place afterwards.
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
