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

  /// For the calling thread's first question. A thread that asks late keeps its place: every question numbers
  /// all threads that exist by then.
  std::uint32_t take(ThreadId thread) {
    const std::lock_guard lock(mMutex);
    const auto known = mNumbers.find(thread);
    // An entry that was taken belonged to a thread that has ended; the system gives its id again.
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
    for (const ThreadId thread : processThreads()) {
      const auto known = mNumbers.find(thread);
      numbers[thread] = known != mNumbers.end() ? known->second : Entry{++mLast};
    }
    mNumbers.swap(numbers);
  }

  std::mutex mMutex;
  std::map<ThreadId, Entry> mNumbers;  ///< of the threads that lived at the last question
  std::uint32_t mLast = 0;
};

}  // namespace

std::uint32_t threadNumber() {
  thread_local const std::uint32_t number = ThreadNumbers::instance().take(currentThread());
  return number;
}

}  // namespace standin::clock
