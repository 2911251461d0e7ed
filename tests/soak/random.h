/// The one source of chance of a soak thread: a seed gives the same choices again, though threads and clock
/// run freely.
#ifndef TESTS_SOAK_RANDOM_H
#define TESTS_SOAK_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>

namespace soak {

class Random {
 public:
  explicit Random(std::uint64_t seed) : mEngine(seed) {}

  /// From `first` to `last`, both included.
  int from(int first, int last) { return std::uniform_int_distribution<int>(first, last)(mEngine); }
  /// True once in `times`.
  bool once(int times) { return from(1, times) == 1; }

  template <class Container>
  auto& of(Container& container) {
    return container[static_cast<std::size_t>(from(0, static_cast<int>(std::size(container)) - 1))];
  }

 private:
  std::mt19937_64 mEngine;
};

}  // namespace soak

#endif
