/// Requests of the user to end the program: Ctrl-C, a termination signal, the closing of its console.
#ifndef WORKBENCH_INTERRUPTION_H
#define WORKBENCH_INTERRUPTION_H

namespace workbench {

/// While a guard exists, such a request is recorded and does not end the process. One at a time; main thread.
class InterruptionGuard {
 public:
  InterruptionGuard();
  ~InterruptionGuard();
  InterruptionGuard(const InterruptionGuard&) = delete;
  InterruptionGuard& operator=(const InterruptionGuard&) = delete;
};

/// Name of the first request since the guard was made ("SIGINT"); null when there was none. Any thread.
const char* interruption();

}  // namespace workbench

#endif
