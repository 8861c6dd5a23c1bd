// SPDX-License-Identifier: MIT
#include "tests/library/dll/string_sep_host/system.h"

namespace {

int64_t hostBlocks = 0;

extern "C" {
__declspec(dllimport) void* GetProcessHeap();
__declspec(dllimport) void* HeapAlloc(void* heap, uint32_t flags, size_t bytes);
__declspec(dllimport) int HeapFree(void* heap, uint32_t flags, void* memory);
__declspec(dllimport) void* GetModuleHandleA(const char* name);
__declspec(dllimport) void* GetProcAddress(void* module, const char* name);
__declspec(dllimport) void* GetStdHandle(uint32_t which);
__declspec(dllimport) int WriteFile(void* file, const void* bytes, uint32_t count,
                                    uint32_t* written, void* overlapped);
__declspec(dllimport) void ExitProcess(uint32_t code);
}

}  // namespace

void* TakeMemory(size_t bytes) {
  constexpr uint32_t kZeroed = 8;  // HEAP_ZERO_MEMORY
  void* memory = HeapAlloc(GetProcessHeap(), kZeroed, bytes);
  if (memory == nullptr) ExitProcess(3);
  ++hostBlocks;
  return memory;
}

void GiveMemory(void* memory) {
  if (HeapFree(GetProcessHeap(), 0, memory)) --hostBlocks;
}

int64_t HostBlocks() {
  return hostBlocks;
}

void* FindExport(const char* name) {
  return GetProcAddress(GetModuleHandleA("velquin.dll"), name);
}

void Print(const char* text) {
  constexpr uint32_t kStandardOutput = 0xFFFFFFF5u;
  uint32_t written = 0;
  WriteFile(GetStdHandle(kStandardOutput), text, static_cast<uint32_t>(TextLength(text)), &written,
            nullptr);
}

void PrintNumber(int64_t number) {
  char text[24];
  char* first = text + sizeof text - 1;
  *first = '\0';
  const bool negative = number < 0;
  uint64_t rest = negative ? 0 - static_cast<uint64_t>(number) : static_cast<uint64_t>(number);
  do {
    *--first = static_cast<char>('0' + rest % 10);
    rest /= 10;
  } while (rest != 0);
  if (negative) *--first = '-';
  Print(first);
}

size_t TextLength(const char* text) {
  size_t length = 0;
  while (text[length] != '\0') ++length;
  return length;
}

bool SameText(const char* first, const char* second) {
  while (*first != '\0' && *first == *second) {
    ++first;
    ++second;
  }
  return *first == *second;
}

// What the compiler itself calls, or wants to see.
extern "C" {
int _fltused = 1;

void* memset(void* memory, int value, size_t bytes) {
  volatile char* target = static_cast<char*>(memory);
  for (size_t i = 0; i < bytes; ++i) target[i] = static_cast<char>(value);
  return memory;
}

void* memcpy(void* target, const void* source, size_t bytes) {
  volatile char* to = static_cast<char*>(target);
  const char* from = static_cast<const char*>(source);
  for (size_t i = 0; i < bytes; ++i) to[i] = from[i];
  return target;
}

int _purecall() {
  ExitProcess(4);
  return 0;
}

int RunCases();

void mainCRTStartup() {
  ExitProcess(static_cast<uint32_t>(RunCases()));
}
}
