/// What a process holds: bytes of its heap, open files.
#ifndef TESTS_SOAK_FOOTPRINT_H
#define TESTS_SOAK_FOOTPRINT_H

#include <cstddef>

namespace soak {

struct Footprint {
  std::size_t heapBytes = 0;  ///< allocated and not freed, by the sanitizer's count where there is one
  std::size_t files = 0;
};

Footprint footprint();

}  // namespace soak

#endif
