/// Counts what the whole program allocates, and lets memory run out. Only for programs that test or measure
/// that: they link `tests_allocations`. Any thread.
#ifndef TESTS_SUPPORT_ALLOCATIONS_H
#define TESTS_SUPPORT_ALLOCATIONS_H

#include <cstddef>
#include <cstdint>

namespace tests {

/// Allocations since the program began.
std::uint64_t allocations();

/// While it lives, only the next `count` allocations succeed, of those of at least `size` bytes.
class MemoryRunsOut {
 public:
  explicit MemoryRunsOut(std::uint64_t count, std::size_t size = 0);
  ~MemoryRunsOut();
  MemoryRunsOut(const MemoryRunsOut&) = delete;
  MemoryRunsOut& operator=(const MemoryRunsOut&) = delete;
};

}  // namespace tests

#endif
