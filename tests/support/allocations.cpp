#include "tests/support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <limits>
#include <new>

namespace {

constexpr std::uint64_t kUnlimited = std::numeric_limits<std::uint64_t>::max();

std::atomic<std::uint64_t> count{0};
/// Allocations that still succeed, of those of at least `smallest` bytes.
std::atomic<std::uint64_t> left{kUnlimited};
std::atomic<std::size_t> smallest{0};

bool isMemoryLeft(std::size_t size) noexcept {
  if (size < smallest.load()) return true;
  std::uint64_t now = left.load();
  while (now != kUnlimited && now != 0)
    if (left.compare_exchange_weak(now, now - 1)) return true;
  return now != 0;
}

void* allocate(std::size_t size) noexcept {
  if (!isMemoryLeft(size)) return nullptr;
  ++count;
  return std::malloc(size);
}

}  // namespace

std::uint64_t tests::allocations() {
  return count;
}

tests::MemoryRunsOut::MemoryRunsOut(std::uint64_t count, std::size_t size) {
  smallest = size;
  left = count;
}

tests::MemoryRunsOut::~MemoryRunsOut() {
  left = kUnlimited;
}

// Never inlined: the compiler would see malloc paired with delete, and warn of a mismatch.
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
