// SPDX-License-Identifier: MIT
#include "tests/support/own_handles_win32.h"

#include <cstddef>
#include <stdexcept>

namespace {

constexpr ULONG kSystemExtendedHandleInformation = 64;
constexpr LONG kInfoLengthMismatch = static_cast<LONG>(0xC0000004);

struct HandleEntry {
  void* object;
  ULONG_PTR processId;
  ULONG_PTR handle;
  ULONG grantedAccess;
  USHORT creatorBackTraceIndex;
  USHORT objectTypeIndex;
  ULONG handleAttributes;
  ULONG reserved;
};

struct HandleTable {
  ULONG_PTR count;
  ULONG_PTR reserved;
  HandleEntry entries[1];
};

using QueryFn = LONG(WINAPI*)(ULONG, void*, ULONG, ULONG*);

QueryFn FindQuery() {
  return reinterpret_cast<QueryFn>(reinterpret_cast<void*>(
      GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
}

}  // namespace

std::vector<HANDLE> OwnHandles() {
  static const QueryFn query = FindQuery();
  std::vector<char> table(1 << 16);
  LONG status = kInfoLengthMismatch;
  while ((status = query(kSystemExtendedHandleInformation, table.data(),
                         static_cast<ULONG>(table.size()), nullptr)) == kInfoLengthMismatch) {
    table.resize(table.size() * 2);
  }
  if (status < 0) throw std::runtime_error("the system tells no handles");
  const auto* handles = reinterpret_cast<const HandleTable*>(table.data());
  std::vector<HANDLE> own;
  for (size_t i = 0; i < handles->count; ++i) {
    const HandleEntry& entry = handles->entries[i];
    if (entry.processId == GetCurrentProcessId())
      own.push_back(reinterpret_cast<HANDLE>(entry.handle));
  }
  return own;
}
