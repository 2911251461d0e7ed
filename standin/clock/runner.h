/// Runs scheduled calls in real time, on a thread of its own that begins with the first of them.
#ifndef STANDIN_CLOCK_RUNNER_H
#define STANDIN_CLOCK_RUNNER_H

#include "process_threads.h"
#include "real_time.h"

#include <condition_variable>
#include <cstdint>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <thread>

namespace standin::clock {

class Runner {
 public:
  /// `time` must outlive the runner and change only while no thread runs: after end().
  explicit Runner(const RealTime& time) : mTime(time) {}
  ~Runner() { end(); }
  Runner(const Runner&) = delete;
  Runner& operator=(const Runner&) = delete;

  /// Any thread but the runner's own for the first call. Runs `call` at `timeMs`; it must not throw.
  void schedule(std::int64_t timeMs, std::function<void()> call);

  /// Any thread. The time of the next call, none when nothing is scheduled.
  std::optional<std::int64_t> next() const;

  /// Forgets what is scheduled and ends the thread, after the call that it may be running. Not from a call.
  void end();

  /// Any thread. The runner's own thread, 0 while there is none.
  ThreadId threadId() const;

 private:
  void begin();
  void run();

  const RealTime& mTime;
  mutable std::mutex mMutex;
  std::condition_variable mNews;
  std::multimap<std::int64_t, std::function<void()>> mCalls;
  std::thread mThread;
  ThreadId mThreadId = 0;
  bool mIsToEnd = false;
};

}  // namespace standin::clock

#endif
