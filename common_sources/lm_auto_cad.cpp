#include "common_sources/lm_auto_cad.h"

#include "LM_Daemon/src/logging.h"
#include "common_sources/auto_cad_proxy.h"
#include "common_sources/daemon_proxy.h"
#include "util/threads.h"

namespace {
constexpr const char* kClass = "LmAutoCad";
constexpr std::uint32_t kWatchPeriodMs = 2000;
}  // namespace

LmAutoCad::LmAutoCad() {
  // The settings name the log's file. What they have logged themselves is kept and comes first in it.
  processLog().init(logPars());
  mAutoCadProxyP = std::make_unique<AutoCadProxy>(this);
  // After the AutoCadProxy, which its reading thread uses from the first event on.
  mDaemonProxyP = std::make_unique<DaemonProxy>(this);
  // Last: it uses the DaemonProxy.
  startWatchThread();
  LM_LOG(kCreation, kClass, "LmAutoCad::LmAutoCad") << "Constructed.";
}

LmAutoCad::~LmAutoCad() {
  LM_LOG(kCreation, kClass, "LmAutoCad::~LmAutoCad") << "Destructing ...";
  mIsRunning = false;
  mAutoCadProxyP->deactivate();
  mDaemonProxyP->stopReading();
  while (mIsWatching) sleepMs(kWatchPeriodMs);
  // The flag is cleared before the thread has left the module's code, which the host may unmap after this.
  if (mIsWatchThreadStarted) pthread_join(mWatchThread, nullptr);
  // The reading thread uses the AutoCadProxy until it has ended.
  mDaemonProxyP.reset();
  mAutoCadProxyP.reset();
  LM_LOG(kCreation, kClass, "LmAutoCad::~LmAutoCad") << "Destructed.";
}

void LmAutoCad::startWatchThread() {
  mIsWatchThreadStarted = pthread_create(&mWatchThread, nullptr, &LmAutoCad::watchingThread, this) == 0;
  if (!mIsWatchThreadStarted)
    LM_LOG(kError, kClass, "LmAutoCad::LmAutoCad") << "Error creating reading thread!";
}

void LmAutoCad::setCapData(short x, short y, short z, short rx, short ry, short rz, std::int32_t extra1,
                           std::int32_t extra2) {
  mCapValues.store({{x, y, z, rx, ry, rz}, extra1, extra2});
}

void LmAutoCad::getCapData(short& x, short& y, short& z, short& rx, short& ry, short& rz,
                           std::int32_t& extra1, std::int32_t& extra2) {
  const CapValues& cap = capData();
  x = cap.axes[0];
  y = cap.axes[1];
  z = cap.axes[2];
  rx = cap.axes[3];
  ry = cap.axes[4];
  rz = cap.axes[5];
  extra1 = cap.extra1;
  extra2 = cap.extra2;
}

void LmAutoCad::watchConnection() {
  mIsWatching = true;
  while (mIsRunning) {
    if (!mDaemonProxyP->checkConnection()) mDaemonProxyP->connect();
    // Slept whole, so that unloading may take up to one period.
    sleepMs(kWatchPeriodMs);
  }
  mIsWatching = false;
}

void* LmAutoCad::watchingThread(void* lmAutoCadP) {
  static_cast<LmAutoCad*>(lmAutoCadP)->watchConnection();
  return nullptr;
}
