// SPDX-License-Identifier: MIT
// What this host needs of the system. It is built without any runtime library, since none for
// Microsoft's compiler is free; kernel32.dll is all it calls besides velquin.dll.
#pragma once

#include <stddef.h>
#include <stdint.h>

/// @return zeroed memory; the program ends when there is none.
void* TakeMemory(size_t bytes);
void GiveMemory(void* memory);

/// @return blocks taken and not given yet.
int64_t HostBlocks();

/// @return one of the library's exports as a bare address; null when it lacks it.
void* FindExport(const char* name);

void Print(const char* text);
void PrintNumber(int64_t number);

/// Makes objects in storage that is there already, as <new> declares it.
inline void* operator new(size_t, void* storage) noexcept {
  return storage;
}

size_t TextLength(const char* text);
bool SameText(const char* first, const char* second);
