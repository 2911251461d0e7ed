/// The threads of this process, as the system counts them. Any thread.
#ifndef STANDIN_WIN32_PROCESS_TASKS_H
#define STANDIN_WIN32_PROCESS_TASKS_H

#include <sys/types.h>

#include <set>

namespace standin::clock {

/// Thread ids of all threads of the process, those that are just ending included.
std::set<pid_t> processTasks();

/// Thread id of the calling thread.
pid_t currentTask();

}  // namespace standin::clock

#endif
