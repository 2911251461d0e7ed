/// What the rewritten sources of a mutation run ask in each place that has mutants: is this one switched on?
/// The number comes from the environment, and each question is recorded, so that a run also shows which
/// mutants it reaches. System calls are made directly: tests replace the library's functions.
#ifndef TESTS_MUTATION_MUTANTS_H
#define TESTS_MUTATION_MUTANTS_H

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <type_traits>

namespace lm_mutation {

constexpr int kMaxMutants = 1 << 16;

// A library and the program that loads it have one of each, with the same content.
inline std::atomic<unsigned char*> reachedP{nullptr};
inline int active = 0;
inline unsigned char unrecorded[kMaxMutants];

/// Reads the number and maps the record: LM_MUTANT, LM_MUTATION_REACHED.
inline unsigned char* start() {
  if (const char* const textP = std::getenv("LM_MUTANT")) active = std::atoi(textP);
  unsigned char* recordP = unrecorded;
  if (const char* const pathP = std::getenv("LM_MUTATION_REACHED")) {
    const long handle = syscall(SYS_openat, AT_FDCWD, pathP, O_RDWR, 0);
    void* const mapP =
        mmap(nullptr, kMaxMutants, PROT_READ | PROT_WRITE, MAP_SHARED, static_cast<int>(handle), 0);
    if (mapP != MAP_FAILED) recordP = static_cast<unsigned char*>(mapP);
    syscall(SYS_close, handle);
  }
  reachedP.store(recordP, std::memory_order_release);
  return recordP;
}

inline bool isActive(int number) {
  unsigned char* recordP = reachedP.load(std::memory_order_acquire);
  if (recordP == nullptr) recordP = start();
  recordP[number] = 1;
  return number == active;
}

/// What the compiler evaluates itself has no mutants.
constexpr bool is(int number) {
  return __builtin_is_constant_evaluated() ? false : isActive(number);
}

/// The values next to a constant, of its own type.
template <typename T>
constexpr T next(T value) {
  if constexpr (std::is_floating_point_v<T>)
    return value == 0 ? T(1) : value * T(1.125);
  else
    return static_cast<T>(value + 1);
}
template <typename T>
constexpr T previous(T value) {
  return static_cast<T>(value - 1);
}

}  // namespace lm_mutation

#endif
