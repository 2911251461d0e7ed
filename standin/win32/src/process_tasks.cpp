#include "process_tasks.h"

#include <dirent.h>
#include <unistd.h>

#include <cstdlib>
#include <memory>

namespace standin::clock {

std::set<pid_t> processTasks() {
  std::set<pid_t> tasks;
  const std::unique_ptr<DIR, int (*)(DIR*)> folder(opendir("/proc/self/task"), closedir);
  if (!folder) return tasks;
  while (const dirent* const entry = readdir(folder.get())) {
    const auto task = static_cast<pid_t>(std::strtol(entry->d_name, nullptr, 10));
    if (task != 0) tasks.insert(task);
  }
  return tasks;
}

pid_t currentTask() {
  thread_local const pid_t task = gettid();
  return task;
}

}  // namespace standin::clock
