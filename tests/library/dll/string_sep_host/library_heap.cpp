// SPDX-License-Identifier: MIT
#include "tests/library/dll/string_sep_host/library_heap.h"

#include "tests/library/dll/string_sep_host/system.h"

namespace {

extern "C" {
__declspec(dllimport) void* GetModuleHandleA(const char* name);
__declspec(dllimport) int VirtualProtect(void* memory, size_t bytes, uint32_t protection,
                                         uint32_t* before);
}

struct ImportDescriptor {  // IMAGE_IMPORT_DESCRIPTOR
  uint32_t names;
  uint32_t other[2];
  uint32_t library;
  uint32_t slots;
};
static_assert(sizeof(ImportDescriptor) == 20, "as the linker writes it");

constexpr size_t kHeadersPlace = 0x3C;      // of the offset of the PE headers
constexpr size_t kImportsPlace = 24 + 120;  // of the import table's address, in 64-bit headers

int64_t blocks = 0;
void* (*systemMalloc)(size_t) = nullptr;
void* (*systemCalloc)(size_t, size_t) = nullptr;
void* (*systemRealloc)(void*, size_t) = nullptr;
void (*systemFree)(void*) = nullptr;

void* CountedMalloc(size_t bytes) {
  void* block = systemMalloc(bytes);
  if (block != nullptr) ++blocks;
  return block;
}

void* CountedCalloc(size_t count, size_t bytes) {
  void* block = systemCalloc(count, bytes);
  if (block != nullptr) ++blocks;
  return block;
}

void* CountedRealloc(void* block, size_t bytes) {
  void* moved = systemRealloc(block, bytes);
  if (block == nullptr && moved != nullptr) ++blocks;
  if (block != nullptr && bytes == 0) --blocks;
  return moved;
}

void CountedFree(void* block) {
  if (block != nullptr) --blocks;
  systemFree(block);
}

template <typename Value>
const Value* At(char* base, size_t offset) {
  return reinterpret_cast<const Value*>(base + offset);
}

/// @return the slot through which the library calls a function; null when it never does.
void** ImportSlot(char* base, const char* function) {
  constexpr uint64_t kByNumber = 1ull << 63;
  constexpr size_t kHint = 2;  // bytes before a name
  const size_t headers = *At<uint32_t>(base, kHeadersPlace);
  const auto* imports = At<ImportDescriptor>(base, *At<uint32_t>(base, headers + kImportsPlace));
  for (; imports->library != 0; ++imports) {
    const auto* names = At<uint64_t>(base, imports->names);
    for (size_t i = 0; names[i] != 0; ++i) {
      if ((names[i] & kByNumber) != 0 || !SameText(At<char>(base, names[i] + kHint), function)) {
        continue;
      }
      return reinterpret_cast<void**>(base + imports->slots) + i;
    }
  }
  return nullptr;
}

/// @return whether the library calls the function, which is the stand-in from now on.
template <typename Function>
bool Replace(const char* name, Function& system, Function standIn) {
  constexpr uint32_t kReadWrite = 4;  // PAGE_READWRITE
  void** slot = ImportSlot(static_cast<char*>(GetModuleHandleA("velquin.dll")), name);
  uint32_t protection = 0;
  if (slot == nullptr || !VirtualProtect(slot, sizeof *slot, kReadWrite, &protection)) return false;
  system = reinterpret_cast<Function>(*slot);
  *slot = reinterpret_cast<void*>(standIn);
  return VirtualProtect(slot, sizeof *slot, protection, &protection) != 0;
}

}  // namespace

bool CountLibraryBlocks() {
  Replace("calloc", systemCalloc, CountedCalloc);
  Replace("realloc", systemRealloc, CountedRealloc);
  return Replace("malloc", systemMalloc, CountedMalloc) && Replace("free", systemFree, CountedFree);
}

int64_t LibraryBlocks() {
  return blocks;
}
