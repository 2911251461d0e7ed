/// The threads of this process, as the system numbers them. Any thread.
#ifndef STANDIN_CLOCK_PROCESS_THREADS_H
#define STANDIN_CLOCK_PROCESS_THREADS_H

#include <cstdint>
#include <set>

namespace standin::clock {

/// The system's number of a thread; 0 is no thread.
using ThreadId = std::uint32_t;

/// All threads of the process, those that are just ending included.
std::set<ThreadId> processThreads();

ThreadId currentThread();

}  // namespace standin::clock

#endif
