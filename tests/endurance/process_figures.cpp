// SPDX-License-Identifier: MIT
#include "tests/endurance/process_figures.h"

#include <windows.h>
#include <winsock2.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <cstddef>
#include <stdexcept>
#include <vector>

namespace {

// The system's table of all handles of all processes.
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

bool IsSocket(HANDLE handle) {
  int type = 0;
  int length = sizeof type;
  return getsockopt(reinterpret_cast<SOCKET>(handle), SOL_SOCKET, SO_TYPE,
                    reinterpret_cast<char*>(&type), &length) == 0;
}

int CountThreads() {
  HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  if (snapshot == INVALID_HANDLE_VALUE) throw std::runtime_error("the system tells no threads");
  int count = 0;
  THREADENTRY32 entry = {};
  entry.dwSize = sizeof entry;
  for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry)) {
    count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1 : 0;
  }
  CloseHandle(snapshot);
  return count;
}

}  // namespace

ProcessFigures ReadProcessFigures() {
  ProcessFigures figures;
  figures.threads = CountThreads();
  const std::vector<HANDLE> handles = OwnHandles();
  figures.handles = static_cast<int>(handles.size());
  for (HANDLE handle : handles) figures.sockets += IsSocket(handle) ? 1 : 0;
  PROCESS_MEMORY_COUNTERS memory = {};
  if (!GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory)) {
    throw std::runtime_error("the system tells no memory");
  }
  figures.workingSetKiB = static_cast<int64_t>(memory.WorkingSetSize / 1024);
  figures.pageFileKiB = static_cast<int64_t>(memory.PagefileUsage / 1024);
  return figures;
}

int64_t CommittedKiB() {
  SIZE_T bytes = 0;
  MEMORY_BASIC_INFORMATION region = {};
  for (const char* at = nullptr; VirtualQuery(at, &region, sizeof region) == sizeof region;
       at = static_cast<const char*>(region.BaseAddress) + region.RegionSize) {
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
  }
  return static_cast<int64_t>(bytes / 1024);
}
