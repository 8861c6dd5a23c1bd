// SPDX-License-Identifier: MIT
// The language of this host's cases.
#pragma once

#include "tests/library/dll/string_sep_host/host_string.h"

// After the framework's strings, as in most hosts; the other order is no different.
#include "include/velquin_util.h"

struct Case {
  const char* name;
  void (*run)();
};

extern const Case resultCases[];  ///< what the members answer; ends with a null name
extern const Case memoryCases[];  ///< whose memory goes where; ends with a null name

extern ATL::CountingManager manager;       ///< of every string whose case names no other
extern ATL::CountingManager otherManager;  ///< copies of its strings belong to `manager`

inline CString Text(const char* text) {
  return CString(text, manager);
}

/// Reports a wrong expectation; the case goes on.
void Expect(bool holds, const char* file, int line, const char* expression);
#define EXPECT(expression) Expect((expression), __FILE__, __LINE__, #expression)
