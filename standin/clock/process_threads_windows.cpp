#include "process_threads.h"

#include <windows.h>
#include <tlhelp32.h>

namespace standin::clock {

std::set<ThreadId> processThreads() {
  std::set<ThreadId> threads;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  for (BOOL found = Thread32First(snapshot, &entry); found; found = Thread32Next(snapshot, &entry))
    if (entry.th32OwnerProcessID == GetCurrentProcessId()) threads.insert(entry.th32ThreadID);
  CloseHandle(snapshot);
  return threads;
}

ThreadId currentThread() {
  return GetCurrentThreadId();
}

}  // namespace standin::clock
