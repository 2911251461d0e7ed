#include "bench/allocation_count.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {
std::atomic<std::uint64_t> allocations{0};
}

std::uint64_t allocationCount() {
  return allocations;
}

void* operator new(std::size_t size) {
  ++allocations;
  if (void* const memoryP = std::malloc(size)) return memoryP;
  throw std::bad_alloc();
}
void operator delete(void* memoryP) noexcept {
  std::free(memoryP);
}
void operator delete(void* memoryP, std::size_t) noexcept {
  std::free(memoryP);
}
