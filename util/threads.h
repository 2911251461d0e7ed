/// What the module needs from the system for threads and time: a pause, the ids of a thread and of the
/// process, and whether the process is ending. Any thread.
#ifndef UTIL_THREADS_H
#define UTIL_THREADS_H

#include <cstdint>

/// Pauses the calling thread for `ms` milliseconds.
void sleepMs(std::uint32_t ms);

/// The platform's numeric id of the calling thread; never 0.
std::uint32_t currentThreadId();

/// The platform's numeric id of this process.
std::uint32_t currentProcessId();

/// Whether the system is ending the process. On Windows all threads but this one are gone then, ended where
/// they were: what they had locked stays locked. A native process leaves its threads alone until all has
/// been destroyed, and the result is always false.
bool isProcessEnding() noexcept;

#endif
