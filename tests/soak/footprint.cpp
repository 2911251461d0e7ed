#include "tests/soak/footprint.h"

#include <malloc.h>

#include <filesystem>
#include <iterator>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
/// Of the sanitizers' runtime, whose header the compiler's package lacks.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

namespace soak {
namespace {

std::size_t heapBytes() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
  return __sanitizer_get_current_allocated_bytes();
#else
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
#endif
}

}  // namespace

Footprint footprint() {
  const std::filesystem::directory_iterator files("/proc/self/fd");
  return {heapBytes(), static_cast<std::size_t>(std::distance(begin(files), end(files)))};
}

}  // namespace soak
