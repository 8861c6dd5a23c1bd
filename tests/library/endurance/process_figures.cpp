// SPDX-License-Identifier: MIT
#include "tests/library/endurance/process_figures.h"

#include <windows.h>
#include <winsock2.h>

#include <psapi.h>
#include <tlhelp32.h>

#include <stdexcept>
#include <vector>

#include "tests/support/own_handles_win32.h"

namespace {

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
