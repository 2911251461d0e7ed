/// Counts what the whole program allocates, and lets memory run out. Linked only into programs that test
/// that.
#ifndef TESTS_UTIL_ALLOCATIONS_H
#define TESTS_UTIL_ALLOCATIONS_H

namespace tests {

/// Allocations since the program began.
int allocations();

/// While it lives, only the next `count` allocations find memory.
class MemoryRunsOut {
 public:
  explicit MemoryRunsOut(int count);
  ~MemoryRunsOut();
  MemoryRunsOut(const MemoryRunsOut&) = delete;
  MemoryRunsOut& operator=(const MemoryRunsOut&) = delete;
};

}  // namespace tests

#endif
