/// The one place where the controller stand-in meets time: a reader's wait for an event. Any thread.
#ifndef STANDIN_CONTROLLER_WAITING_H
#define STANDIN_CONTROLLER_WAITING_H

#include <cstdint>
#include <memory>

namespace standin::controller {

class Waiting {
 public:
  Waiting();
  ~Waiting();

  /// One thread at a time. Waits `ms`, or until ring(); a ring that came before ends the wait at once.
  void wait(std::uint32_t ms);

  /// Any thread. Ends the wait, or the next one. Never call it with a lock held that the reader takes: on a
  /// clock that replays, the reader runs before this returns.
  void ring();

  /// Milliseconds on the clock that wait() waits on.
  static std::int64_t nowMs();

 private:
  struct State;
  std::unique_ptr<State> mStateP;
};

}  // namespace standin::controller

#endif
