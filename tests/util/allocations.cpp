#include "tests/util/allocations.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr int kUnlimited = std::numeric_limits<int>::max();

std::atomic<int> count{0};
/// The value of `count` from which on there is no memory.
std::atomic<int> limit{kUnlimited};

void* allocate(std::size_t size) noexcept {
  if (count.load() >= limit.load()) return nullptr;
  ++count;
  return std::malloc(size);
}

}  // namespace

int tests::allocations() {
  return count;
}

tests::MemoryRunsOut::MemoryRunsOut(int left) {
  limit = count + left;
}

tests::MemoryRunsOut::~MemoryRunsOut() {
  limit = kUnlimited;
}

// Not to be inlined: the compiler would take malloc and delete for a pair that does not belong together.
[[gnu::noinline]] void* operator new(std::size_t size) {
  if (void* const memoryP = allocate(size)) return memoryP;
  throw std::bad_alloc();
}
[[gnu::noinline]] void* operator new[](std::size_t size) {
  return operator new(size);
}
[[gnu::noinline]] void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
[[gnu::noinline]] void* operator new[](std::size_t size, const std::nothrow_t&) noexcept {
  return allocate(size);
}
[[gnu::noinline]] void operator delete(void* memoryP) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete[](void* memoryP) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete(void* memoryP, std::size_t) noexcept {
  std::free(memoryP);
}
[[gnu::noinline]] void operator delete[](void* memoryP, std::size_t) noexcept {
  std::free(memoryP);
}
