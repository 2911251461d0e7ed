/// Performs the events of a session: the device's are scheduled on the clock, the user's are performed when
/// the host is idle.
#ifndef WORKBENCH_SESSION_PLAYER_H
#define WORKBENCH_SESSION_PLAYER_H

#include "workbench/running/recording.h"
#include "workbench/running/reloading.h"
#include "workbench/sessions/session.h"

#include <atomic>
#include <cstddef>
#include <functional>

namespace workbench {

/// What the user's actions reach besides the host.
struct Surroundings {
  Recorder& recorder;               ///< records what the host prints about an action
  std::function<void()> writeMenu;  ///< puts the menu file where the module looks for it
  Reloading& reloading;             ///< changes the module's settings
};

/// Performs an action of the user at the host. Main thread, while the host is idle. Throws InputError when
/// the host has no such variable or value.
void perform(const TimedUserAction& event, const Session& session, const Surroundings& surroundings);

/// Performs an action of the device. Any thread.
void perform(const DeviceAction& action);

/// The device's events on the clock.
class DeviceSchedule {
 public:
  /// Puts every event of the session onto the clock, which has been started. Main thread. The session and the
  /// schedule must outlive the clock's run.
  explicit DeviceSchedule(const Session& session);
  DeviceSchedule(const DeviceSchedule&) = delete;
  DeviceSchedule& operator=(const DeviceSchedule&) = delete;

  /// Whether every event has happened. Any thread.
  bool isDone() const { return mLeft == 0; }

 private:
  std::atomic<std::size_t> mLeft;
};

}  // namespace workbench

#endif
