/// Threads numbered in order of their creation. The system numbers them upwards but from anywhere; a log must
/// not differ for that.
#include "process_threads.h"
#include "standin_ticks.h"

#include <map>
#include <mutex>

namespace standin::clock {
namespace {

class ThreadNumbers {
 public:
  /// Never destroyed: threads may outlive the statics.
  static ThreadNumbers& instance() {
    static auto* const numbers = new ThreadNumbers;
    return *numbers;
  }

  /// For the calling thread's first call. A thread that calls late keeps its place, because every call
  /// numbers all threads that exist by then.
  std::uint32_t take(ThreadId thread) {
    const std::lock_guard lock(mMutex);
    const auto known = mNumbers.find(thread);
    // A taken entry belongs to a thread that has ended: the system has given its id to this one.
    if (known != mNumbers.end() && known->second.isTaken) mNumbers.erase(known);
    if (mNumbers.count(thread) == 0) numberAll();
    Entry& entry = mNumbers[thread];
    entry.isTaken = true;
    return entry.number;
  }

 private:
  struct Entry {
    std::uint32_t number = 0;
    bool isTaken = false;
  };

  void numberAll() {
    std::map<ThreadId, Entry> numbers;
    // The set is in ascending order of ids, which is the order of creation unless the ids have wrapped.
    for (const ThreadId thread : processThreads()) {
      const auto known = mNumbers.find(thread);
      numbers[thread] = known != mNumbers.end() ? known->second : Entry{++mLast};
    }
    mNumbers.swap(numbers);
  }

  std::mutex mMutex;
  std::map<ThreadId, Entry> mNumbers;  ///< of the threads that lived at the last call
  std::uint32_t mLast = 0;
};

}  // namespace

std::uint32_t threadNumber() {
  // Once for each thread: every log line asks for the number, and the table takes a lock.
  thread_local const std::uint32_t number = ThreadNumbers::instance().take(currentThread());
  return number;
}

}  // namespace standin::clock
