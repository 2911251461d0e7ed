/// The daemon that the client library would connect to: what is connected, what is pending, what went wrong.
/// The library's operations and the feed both work on it. Any thread.
#ifndef STANDIN_CONTROLLER_DAEMON_H
#define STANDIN_CONTROLLER_DAEMON_H

#include "standin/controller/controller_feed.h"
#include "standin_clock.h"

#include <array>
#include <cstdint>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace standin::controller {

/// What a test may set and ask, in one value: a daemon freshly started is a fresh one of these.
struct DaemonState {
  std::vector<std::string> devices{"Lumetrapad"};
  std::int32_t rotationMode = 0;
  std::uint8_t zoomAfterView = 0;
  bool isReadBlocking = false;
  bool isDown = false;
  bool isConnected = false;
  bool isConnectCalled = false;
  std::string connectedAs;
  std::int32_t connectReserved = 0;
  std::deque<Event> pending;
  std::array<std::int16_t, 6> lastHandedOver{};
  std::uint64_t eventsHandedOver = 0;
  std::vector<ApplMode> applModes;
  std::deque<Call> calls;
  std::vector<std::string> breaches;
  std::thread::id reader;  ///< who called lmGetEvent since the last connect

  /// The daemon responds to the operations.
  bool isResponding() const { return isConnected && !isDown; }
  /// An event of the device at index `device` (0 or more) can be fetched.
  bool isEventReady(std::int32_t device) const;
  /// Keeps the newest calls, and of reads in a row the first.
  void noteCall(const char* operation);
  /// Keeps one line of each breach of the calling order.
  void noteBreach(const std::string& line);
};

struct Daemon {
  /// Never destroyed: a reader may outlive the statics.
  static Daemon& instance();

  std::mutex mutex;
  DaemonState state;
  std::uint64_t changes = 0;  ///< counts what ends a reader's wait
  clock::Alarm readerAlarm;   ///< has a lock of its own
};

/// The daemon's state, locked for as long as this lives.
class Locked {
 public:
  Locked() : mLock(Daemon::instance().mutex) {}
  DaemonState* operator->() const { return &Daemon::instance().state; }
  DaemonState& operator*() const { return Daemon::instance().state; }

 private:
  std::lock_guard<std::mutex> mLock;
};

/// Wakes the reader. Never call it with the state locked: on a replay clock the reader runs before this
/// returns, and it takes the lock.
void wakeReader();

/// Makes a change that ends the wait of a reader in lmGetEvent.
template <class Change>
void changeAndWake(Change&& change) {
  {
    const Locked daemon;
    std::forward<Change>(change)(*daemon);
    ++Daemon::instance().changes;
  }
  wakeReader();
}

}  // namespace standin::controller

#endif
