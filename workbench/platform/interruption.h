/// The user's wish to end the program: Ctrl-C, a request to terminate, the closing of its console.
#ifndef WORKBENCH_INTERRUPTION_H
#define WORKBENCH_INTERRUPTION_H

namespace workbench {

/// While one lives, such a wish is noted and does not end the process. One at a time; main thread.
class InterruptionGuard {
 public:
  InterruptionGuard();
  ~InterruptionGuard();
  InterruptionGuard(const InterruptionGuard&) = delete;
  InterruptionGuard& operator=(const InterruptionGuard&) = delete;
};

/// Name of the wish that came first since the guard was made ("SIGINT"); null when none came. Any thread.
const char* interruption();

}  // namespace workbench

#endif
