/// What the module asks of threads and time: a pause, and the numbers that name a thread and the process.
/// Any thread.
#ifndef UTIL_THREADS_H
#define UTIL_THREADS_H

#include <cstdint>

/// Pauses the calling thread for `ms` milliseconds.
void sleepMs(std::uint32_t ms);

/// The platform's numeric id of the calling thread; never 0.
std::uint32_t currentThreadId();

/// The platform's numeric id of this process.
std::uint32_t currentProcessId();

#endif
