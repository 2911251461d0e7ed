/// Memory that the process has in use. Windows only; one thread at a time.
#ifndef TESTS_SUPPORT_MEMORY_USE_H
#define TESTS_SUPPORT_MEMORY_USE_H

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <stdexcept>
#include <string>

namespace tests {

/// What is allotted on a heap.
struct HeapUse {
  std::size_t blocks = 0;
  std::size_t bytes = 0;

  bool operator==(const HeapUse& other) const { return blocks == other.blocks && bytes == other.bytes; }
};

inline std::ostream& operator<<(std::ostream& out, const HeapUse& use) {
  return out << use.blocks << " blocks with " << use.bytes << " bytes";
}

/// The heap of a C runtime that is loaded, "msvcr100.dll" for the module's: its malloc's, and no other's.
inline HeapUse heapUse(const char* runtime) {
  const FARPROC query = GetProcAddress(GetModuleHandleA(runtime), "_get_heap_handle");
  if (query == nullptr) throw std::runtime_error(std::string(runtime) + ": not loaded, or without a heap");
  const auto heap =
      reinterpret_cast<HANDLE>(reinterpret_cast<std::intptr_t (*)()>(reinterpret_cast<void*>(query))());
  HeapUse use;
  PROCESS_HEAP_ENTRY entry{};
  HeapLock(heap);
  while (HeapWalk(heap, &entry)) {
    if ((entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) == 0) continue;
    ++use.blocks;
    use.bytes += entry.cbData;
  }
  HeapUnlock(heap);
  return use;
}

/// Memory that is the process's own: heaps, stacks, and what libraries have written to.
inline std::size_t privateBytes() {
  std::size_t bytes = 0;
  MEMORY_BASIC_INFORMATION region{};
  for (const char* addressP = nullptr; VirtualQuery(addressP, &region, sizeof region) != 0;
       addressP = static_cast<const char*>(region.BaseAddress) + region.RegionSize)
    if (region.State == MEM_COMMIT && region.Type == MEM_PRIVATE) bytes += region.RegionSize;
  return bytes;
}

}  // namespace tests

#endif
