/// The module's side of the link to the driver daemon: connects through the client library, and runs the
/// thread that reads one event after another and stores each for the main thread. Never calls the host.
#ifndef COMMON_SOURCES_DAEMON_PROXY_H
#define COMMON_SOURCES_DAEMON_PROXY_H

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <string>

class LmAutoCad;

class DaemonProxy {
 public:
  /// Main thread. Sets the owner's pending application function to -1, connects once and starts the reading
  /// thread; a daemon that is absent is no failure.
  explicit DaemonProxy(LmAutoCad* lmAutoCadP);

  /// Main thread. Disconnects, which ends a waiting read, and waits for the reading thread to end. The owner
  /// has called stopReading() before.
  ~DaemonProxy();

  DaemonProxy(const DaemonProxy&) = delete;
  DaemonProxy& operator=(const DaemonProxy&) = delete;

  /// Main and watch thread. Connects, lists the devices and reads the rotation mode; true on success.
  bool connect();

  /// Watch thread. True if the daemon still responds; otherwise closes the connection and returns false.
  bool checkConnection();

  /// Any thread. Reads the advanced settings into the AutoCadProxy's rotation mode; a failed read resets it
  /// to code 0.
  void retrieveRotMode();

  /// Reading thread. Reads events until stopReading().
  void readMouseEvents();

  /// Any thread. Makes the reading loop end after its current read.
  void stopReading() { mIsToRead = false; }

  /// Any thread. The result of the last connect or connection check.
  bool isConnected() const { return mIsConnected; }

 private:
  static void* readingThread(void* daemonProxyP);
  void readEvent();
  void storeCommandEvent(std::int32_t eventCode);
  void reportMode();

  LmAutoCad* mLmAutoCadP;
  pthread_t mReadThread{};
  bool mIsReadThreadStarted = false;
  std::atomic<bool> mIsToRead{true};
  std::atomic<bool> mIsReading{false};
  std::atomic<bool> mIsConnected{false};
  std::atomic<bool> mIsModeToSend{false};
  std::string mLastSentMode;  ///< reading thread only
};

#endif
