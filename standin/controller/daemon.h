/// The daemon that the client library would talk to: what is connected, what is pending, what went wrong. The
/// library's operations and the feed both end here. Any thread.
#ifndef STANDIN_CONTROLLER_DAEMON_H
#define STANDIN_CONTROLLER_DAEMON_H

#include "standin/controller/controller_feed.h"
#include "standin/controller/waiting.h"

#include <array>
#include <cstdint>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace standin::controller {

/// In the order in which their names are registered as fault points.
enum class Operation {
  kConnect,
  kDisconnect,
  kGetEvent,
  kGetAdvancedSettings,
  kGetDevInfo,
  kGetDevNum,
  kSetApplMode
};

/// What a test may set and ask, in one value: a daemon freshly started is a fresh one of these.
struct DaemonState {
  std::vector<std::string> devices{"Lumetrapad"};
  std::int32_t rotationMode = 0;
  std::uint8_t zoomAfterView = 0;
  bool isDown = false;
  bool isConnected = false;
  bool isConnectCalled = false;
  std::string connectedAs;
  std::int32_t connectReserved = 0;
  std::deque<Event> pending;
  std::array<std::int16_t, 6> lastHandedOver{};
  std::uint64_t eventsHandedOver = 0;
  std::vector<ApplMode> applModes;
  std::vector<std::string> breaches;
  std::thread::id reader;  ///< who called lmGetEvent since the last connect

  bool isAnswering() const { return isConnected && !isDown; }
};

class Daemon {
 public:
  /// Never destroyed: a reader may outlive the statics.
  static Daemon& instance();

  static constexpr std::int32_t kSuccess = 0;
  static constexpr std::int32_t kFailure = 1;
  /// Longest wait of lmGetEvent.
  static constexpr std::uint32_t kEventWaitMs = 50;

  FaultRegistry& faults() { return mFaults; }

  /// Carries out an operation that does not wait: notes a breach of the calling order, misbehaves when told
  /// to, and fails when the daemon does not answer, without calling `work`. `work` runs with the state locked
  /// and answers the status.
  std::int32_t operate(Operation operation, const std::function<std::int32_t(DaemonState&)>& work);

  std::int32_t connect(std::int32_t reserved, const char* application);
  std::int32_t disconnect();

  /// Waits for an event of the device at index `device` (0 or more) and fills it; fails, never sooner than
  /// after a wait or a change of the daemon's state, when none came.
  std::int32_t fetchEvent(std::int32_t device, Event& event);

  /// Reads something of the state.
  template <typename Answer>
  Answer ask(const std::function<Answer(const DaemonState&)>& question) const {
    const std::lock_guard lock(mMutex);
    return question(mState);
  }

  /// Changes something that a waiting reader does not wait for.
  void set(const std::function<void(DaemonState&)>& change);

  /// Changes what a waiting reader must learn of: its lmGetEvent returns.
  void change(const std::function<void(DaemonState&)>& change);

  void deliver(const Event& event);

 private:
  Daemon();
  void noteOrder(Operation operation);
  void noteReader();
  void noteBreach(const std::string& line);
  bool isEventReady(std::int32_t device) const;
  bool waitForReader(std::int32_t device, bool isEventEnough);

  mutable std::mutex mMutex;
  DaemonState mState;
  std::uint64_t mChanges = 0;  ///< of the state that a waiting reader must learn of
  Waiting mWaiting;
  FaultRegistry mFaults;
};

}  // namespace standin::controller

#endif
