/// The core object: the settings, both proxies, the slots that pass the device's events from the reading
/// thread to the main thread, and the thread that watches the connection. One for each load of the module.
#ifndef COMMON_SOURCES_LM_AUTO_CAD_H
#define COMMON_SOURCES_LM_AUTO_CAD_H

#include "common_sources/cap_arithmetic.h"
#include "common_sources/latest_value.h"
#include "common_sources/pending_slot.h"
#include "common_sources/settings.h"

#include <pthread.h>

#include <atomic>
#include <cstdint>
#include <memory>

class AutoCadProxy;
class DaemonProxy;

class LmAutoCad : public Settings {
 public:
  static constexpr std::int32_t kNoApplFunc = -1;
  static constexpr std::int32_t kNoSpecialApplFunc = 0;

  /// Main thread. Reads the settings, opens the log, makes both proxies and starts the watch thread, in this
  /// order. An absent daemon is no failure: the watch thread retries.
  LmAutoCad();

  /// Main thread. Stops the threads (in steps of up to 2000 ms), deletes the proxies and writes the settings
  /// back.
  ~LmAutoCad();

  LmAutoCad(const LmAutoCad&) = delete;
  LmAutoCad& operator=(const LmAutoCad&) = delete;

  AutoCadProxy* autoCadProxy() const { return mAutoCadProxyP.get(); }
  DaemonProxy* daemonProxy() const { return mDaemonProxyP.get(); }

  /// Reading thread. The latest deflection, raw device values, and the two values that came with it.
  void setCapData(short x, short y, short z, short rx, short ry, short rz, std::int32_t extra1,
                  std::int32_t extra2);

  /// Main thread. The values last set together, never a mixture of two.
  void getCapData(short& x, short& y, short& z, short& rx, short& ry, short& rz, std::int32_t& extra1,
                  std::int32_t& extra2);

  /// Main thread. The same without copying; valid until the next call.
  const CapValues& capData() { return mCapValues.load(); }

  /// Any thread. Number of the application function to be executed, kNoApplFunc for none.
  void setApplFunc(std::int32_t number) { mApplFunc.set(number); }
  std::int32_t getApplFunc() const { return mApplFunc.get().value; }

  /// Any thread. Event code of the special function to be executed, kNoSpecialApplFunc for none.
  void setSpecialApplFunc(std::int32_t code) { mSpecialApplFunc.set(code); }
  std::int32_t getSpecialApplFunc() const { return mSpecialApplFunc.get().value; }

  /// Main thread. The slots themselves, for clearing a request once it has been executed.
  PendingSlot& applFuncSlot() { return mApplFunc; }
  PendingSlot& specialApplFuncSlot() { return mSpecialApplFunc; }

  /// Watch thread. Checks the connection every 2000 ms and connects again when the daemon does not respond.
  void watchConnection();

 private:
  static void* watchingThread(void* lmAutoCadP);
  void startWatchThread();

  std::unique_ptr<AutoCadProxy> mAutoCadProxyP;
  std::unique_ptr<DaemonProxy> mDaemonProxyP;
  pthread_t mWatchThread{};
  bool mIsWatchThreadStarted = false;
  std::atomic<bool> mIsRunning{true};
  std::atomic<bool> mIsWatching{false};
  LatestValue<CapValues> mCapValues;
  PendingSlot mApplFunc{0};
  PendingSlot mSpecialApplFunc{kNoSpecialApplFunc};
};

#endif
