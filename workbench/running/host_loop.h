/// The host's main loop during a session: queued texts, timers, and what the user does, in order of time.
///
/// At one moment the device's events come first, then texts that wait to be carried out, then timers, then
/// the user's events, then the end. The user does nothing during a call into the module.
#ifndef WORKBENCH_HOST_LOOP_H
#define WORKBENCH_HOST_LOOP_H

#include "workbench/running/recording.h"
#include "workbench/sessions/session.h"
#include "workbench/sessions/session_player.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace workbench {

/// Called between two steps with the progress: now and the end, in ms.
using Progress = std::function<void(std::int64_t nowMs, std::int64_t endMs)>;

/// The user ended the run; `what()` says how and when.
class Interrupted : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

class HostLoop {
 public:
  /// The clock has been started and the device's events are on it. The arguments must outlive the loop. What
  /// goes wrong is added to `problems`, one line each.
  HostLoop(const Session& session, const DeviceSchedule& device, Surroundings surroundings,
           std::vector<std::string>& problems)
      : mSession(session), mDevice(device), mSurroundings(std::move(surroundings)), mProblems(problems) {}

  /// Runs the session to its end. Main thread. Throws InputError when the host has no variable or value
  /// that the session names, and Interrupted when the user ends the program.
  void run(const Progress& progress);

 private:
  bool runQueuedText();
  bool runTimer();
  bool runUserEvent();
  bool isOver() const;
  std::optional<std::int64_t> nextUserTime() const;
  std::int64_t nextTime() const;

  const Session& mSession;
  const DeviceSchedule& mDevice;
  Surroundings mSurroundings;
  std::vector<std::string>& mProblems;
  std::size_t mNextUser = 0;
};

}  // namespace workbench

#endif
