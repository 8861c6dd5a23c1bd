// SPDX-License-Identifier: MIT
// A small host for the tests of loading and unloading: a process of its own, so that a crash or a
// hang shows. Exit code 0 when all went well.
// Usage: dll_test_host WHAT ADDRESS
#include <windows.h>

#include <cstring>

#include "api/telescope_api.h"

namespace {

struct Host {
  HMODULE library = LoadLibraryW(L"velquin.dll");

  template <typename Function>
  Function Find(const char* name) {
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
  }
  bool Start(const char* address) {
    return library != nullptr &&
           Find<TelescopeStartFn>("TelescopeStart")(nullptr, address, nullptr, 0) == 1;
  }
  void End() { Find<TelescopeEndFn>("TelescopeEnd")(nullptr); }
};

// Lets the library go with the session running; the worker goes on for a while, then the process
// ends.
int FreeWithoutEnd(const char* address) {
  Host host;
  if (!host.Start(address)) return 1;
  FreeLibrary(host.library);
  Sleep(300);
  return 0;
}

// Loads the library again after that and ends the session that still runs.
int EndAfterLoadingAgain(const char* address) {
  Host first;
  if (!first.Start(address)) return 1;
  FreeLibrary(first.library);
  Host second;
  second.End();
  FreeLibrary(second.library);
  return GetModuleHandleW(L"velquin.dll") == nullptr ? 0 : 2;
}

int ExitWhileRunning(const char* address) {
  Host host;
  return host.Start(address) ? 0 : 1;
}

int ManySessions(const char* address) {
  for (int i = 0; i < 50; ++i) {
    Host host;
    if (!host.Start(address)) return 1;
    host.End();
    FreeLibrary(host.library);
    if (GetModuleHandleW(L"velquin.dll") != nullptr) return 2;
  }
  return 0;
}

// More often than a process has thread slots: each load must give back what it takes.
int ManyLoads() {
  for (int i = 0; i < 1200; ++i) {
    Host host;
    if (host.library == nullptr) return 1;
    host.Find<TelescopeGetStatusFn>("TelescopeGetStatus")(nullptr);
    FreeLibrary(host.library);
  }
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 3) return 9;
  const auto is = [&](const char* what) { return std::strcmp(argv[1], what) == 0; };
  if (is("free-without-end")) return FreeWithoutEnd(argv[2]);
  if (is("end-after-loading-again")) return EndAfterLoadingAgain(argv[2]);
  if (is("exit-while-running")) return ExitWhileRunning(argv[2]);
  if (is("many-sessions")) return ManySessions(argv[2]);
  if (is("many-loads")) return ManyLoads();
  return 9;
}
