/// The threads of a Linux process, as /proc lists them.
#include "process_threads.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace standin::clock {

std::set<ThreadId> processThreads() {
  std::set<ThreadId> threads;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc/self/task"), closedir);
  if (!folder) return threads;
  while (const dirent* const entry = readdir(folder.get())) {
    // "." and ".." parse as 0, which is no thread.
    const auto thread = static_cast<ThreadId>(std::strtoul(entry->d_name, nullptr, 10));
    if (thread != 0) threads.insert(thread);
  }
  return threads;
}

ThreadId currentThread() {
  // Kept for each thread: waits ask for it often, and gettid() is a system call.
  thread_local const auto thread = static_cast<ThreadId>(gettid());
  return thread;
}

}  // namespace standin::clock
