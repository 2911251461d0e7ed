#include "common_sources/daemon_proxy.h"

#include "LM_Daemon/src/logging.h"
#include "common_sources/auto_cad_proxy.h"
#include "common_sources/lm_auto_cad.h"
#include "device/special_functions.h"
#include "util/threads.h"

#include <string.h>  // NOLINT(modernize-deprecated-headers): strnlen is no part of C++

#include <cassert>
#include <string_view>

namespace {

constexpr const char* kClass = "DaemonProxy";
constexpr const char* kReadMouseEvents = "DaemonProxy::readMouseEvents";
// Two names on purpose: the connection uses the name of the program, the mode report that of the product.
constexpr const char* kApplicationName = "acad";
constexpr const char* kModeApplicationName = "AutoCAD";
// Only the first device is read, however many the daemon reports.
constexpr std::int32_t kDevice = 0;
constexpr std::uint32_t kReadingWaitMs = 200;

/// An exception of the library counts as a failure: none may leave a thread's body.
template <typename Call>
bool succeeds(Call call) {
  try {
    return call() == 0;
  } catch (...) {
    return false;
  }
}

bool isDeviceCountRead(std::int32_t& count) {
  std::int32_t ignored1 = 0, ignored2 = 0;
  return succeeds([&] { return lmGetDevNum(&count, &ignored1, &ignored2); });
}

}  // namespace

DaemonProxy::DaemonProxy(LmAutoCad* lmAutoCadP) : mLmAutoCadP(lmAutoCadP) {
  LM_LOG(kCreation, kClass, "DaemonProxy::DaemonProxy") << "Constructing ...";
  // The slot begins with 0, which is a function. Set before the reading thread or a tick can see it.
  mLmAutoCadP->setApplFunc(LmAutoCad::kNoApplFunc);
  mIsConnected = connect();
  // Also without a connection: the watch thread makes one later, and the reads fail until then.
  mIsReadThreadStarted = pthread_create(&mReadThread, nullptr, &DaemonProxy::readingThread, this) == 0;
  LM_LOG(kCreation, kClass, "DaemonProxy::DaemonProxy") << "Constructed.";
}

DaemonProxy::~DaemonProxy() {
  assert(!mIsToRead && "the owner stops the reading before");
  LM_LOG(kCreation, kClass, "DaemonProxy::~DaemonProxy") << "Destructing ...";
  mIsConnected = false;
  // Before the wait: it ends the read in which the reading thread may wait.
  if (!succeeds(lmDisconnect))
    LM_LOG(kError, kClass, "DaemonProxy::~DaemonProxy") << "Error in lmDisConnect()!";
  while (mIsReading) sleepMs(kReadingWaitMs);
  // The flag is cleared before the thread has left the module's code, which the host may unmap after this.
  if (mIsReadThreadStarted) pthread_join(mReadThread, nullptr);
  LM_LOG(kCreation, kClass, "DaemonProxy::~DaemonProxy") << "Destructed.";
}

bool DaemonProxy::connect() {
  LM_LOG(kTrace, kClass, "DaemonProxy::connect") << "Checking connection ...";
  mIsConnected = false;
  if (!succeeds([] { return lmConnect(0, kApplicationName); })) {
    LM_LOG(kError, kClass, "DaemonProxy::connect") << "Error in lmConnect()!";
    return false;
  }
  std::int32_t count = 0;
  if (!isDeviceCountRead(count)) {
    LM_LOG(kError, kClass, "DaemonProxy::connect") << "Error in lmGetDevNum()!";
    return false;
  }
  for (std::int32_t index = 0; index < count; ++index) {
    // Zeroed, because the library need not fill the whole record.
    LmDevInfo info{};
    if (!succeeds([&] { return lmGetDevInfo(index, &info); })) {
      LM_LOG(kError, kClass, "DaemonProxy::connect") << "Error in lmGetDevInfo()!";
      return false;
    }
    LM_LOG(kInfo, kClass, "DaemonProxy::connect")
        << "devIdx: " << index << ":" << std::string_view(info.name, strnlen(info.name, sizeof info.name));
  }
  retrieveRotMode();
  // A restarted daemon has lost the mode that was sent to its predecessor.
  mIsConnected = true;
  mIsModeToSend = true;
  return true;
}

bool DaemonProxy::checkConnection() {
  std::int32_t count = 0;
  if (isDeviceCountRead(count)) {
    mIsConnected = true;
    return true;
  }
  LM_LOG(kError, kClass, "DaemonProxy::checkConnection") << "Error in lmGetDevNum()!";
  mIsConnected = false;
  if (!succeeds(lmDisconnect))
    LM_LOG(kError, kClass, "DaemonProxy::checkConnection") << "Error in lmDisconnect()!";
  return false;
}

void DaemonProxy::retrieveRotMode() {
  LmAdvancedSettings settings{};
  if (!succeeds([&] { return lmGetAdvancedSettings(kDevice, &settings); })) {
    LM_LOG(kError, kClass, "DaemonProxy::retrieveRotMode") << "Error in lmGetAdvancedSettings()!";
    // The library may have written part of the record before it failed.
    settings = {};
  }
  mLmAutoCadP->autoCadProxy()->setRotationMode(
      decodeRotationMode(settings.rotationMode, settings.zoomAfterView != 0));
}

void DaemonProxy::readMouseEvents() {
  assert(!mIsReading && "one reading thread");
  mLastSentMode.clear();
  mIsReading = true;
  LM_LOG(kCreation, kClass, kReadMouseEvents)
      << "Invoking reading loop ... mIsToRead: " << static_cast<int>(mIsToRead);
  while (mIsToRead) {
    try {
      readEvent();
      reportMode();
    } catch (...) {
      // A failed event must not end the thread: the next one may succeed.
      LM_LOG(kError, kClass, kReadMouseEvents) << "Error readMouseEvents()";
    }
  }
  LM_LOG(kCreation, kClass, kReadMouseEvents) << "Reading loop left.";
  mIsReading = false;
}

void DaemonProxy::readEvent() {
  short x = 0, y = 0, z = 0, rx = 0, ry = 0, rz = 0;
  std::int32_t ignored1 = 0, ignored2 = 0, eventCode = 0, extra1 = 0, extra2 = 0;
  const bool isRead = succeeds([&] {
    return lmGetEvent(kDevice, &x, &y, &z, &rx, &ry, &rz, &ignored1, &ignored2, &eventCode, &extra1, &extra2);
  });
  // Silent: a read that found no event fails too, many times a second.
  if (!isRead) return;
  // The axes are valid for a motion record only.
  if (eventCode < 0)
    mLmAutoCadP->setCapData(x, y, z, rx, ry, rz, extra1, extra2);
  else
    storeCommandEvent(eventCode);
}

void DaemonProxy::storeCommandEvent(std::int32_t eventCode) {
  LM_LOG(kDebug, kClass, kReadMouseEvents)
      << "event: " << eventCode << ", APPL_FUNC_START: " << static_cast<int>(APPL_FUNC_START);
  if (eventCode == LM_SETTINGS_CHANGED || eventCode == LM_SETTINGS_CHANGED_2) retrieveRotMode();
  if (findSpecialFunction(eventCode) != nullptr) mLmAutoCadP->setSpecialApplFunc(eventCode);
  // No upper bound: the number is checked against the menu table when it is executed.
  if (eventCode >= APPL_FUNC_START) mLmAutoCadP->setApplFunc(eventCode - APPL_FUNC_START);
  // The daemon asks for a report; an empty name differs from every mode.
  if (eventCode == LM_SEND_APPL_MODE) mLastSentMode.clear();
}

void DaemonProxy::reportMode() {
  const std::string& mode = mLmAutoCadP->autoCadProxy()->applModeName();
  if (mode == mLastSentMode && !mIsModeToSend) return;
  // Cleared before the call: a connection made during it asks for a report of its own.
  mIsModeToSend = false;
  if (succeeds([&] { return lmSetApplMode(kModeApplicationName, mode.c_str()); })) mLastSentMode = mode;
}

void* DaemonProxy::readingThread(void* daemonProxyP) {
  auto* const self = static_cast<DaemonProxy*>(daemonProxyP);
  LM_LOG(kCreation, kClass, kReadMouseEvents) << "Creating reading thread ...";
  self->readMouseEvents();
  LM_LOG(kCreation, kClass, kReadMouseEvents) << "Reading thread ended.";
  return nullptr;
}
