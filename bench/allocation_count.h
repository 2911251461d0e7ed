/// Counts what a benchmark's program allocates. Include in a benchmark and list allocation_count.cpp with it.
#ifndef BENCH_ALLOCATION_COUNT_H
#define BENCH_ALLOCATION_COUNT_H

#include <cstdint>

/// Calls of operator new in this program since it began, of any thread.
std::uint64_t allocationCount();

#endif
