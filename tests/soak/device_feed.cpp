#include "tests/soak/device_feed.h"

#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"

#include <chrono>

namespace soak {

namespace controller = standin::controller;

namespace {

constexpr std::int32_t kCommandCodes[] = {LM_SETTINGS_CHANGED,
                                          LM_SETTINGS_CHANGED_2,
                                          LM_VIEW_FRONT,
                                          LM_VIEW_RIGHT,
                                          LM_VIEW_TOP,
                                          LM_FIT_ALL,
                                          LM_SEND_APPL_MODE,
                                          LM_VIEW_BACK,
                                          LM_VIEW_LEFT,
                                          LM_VIEW_BOTTOM,
                                          APPL_FUNC_START,
                                          APPL_FUNC_START + 1,
                                          0x2000E,
                                          0,
                                          0x7FFFFFFF};

/// Small and large pushes, both ends of the range, and a cap at rest.
constexpr int kReaches[] = {0, 1, 200, 2000, 32767};

void pause(int ms) {
  std::this_thread::sleep_for(std::chrono::milliseconds(ms));
}

}  // namespace

DeviceFeed::~DeviceFeed() {
  mIsToEnd = true;
  mThread.join();
  controller::setDown(false);
}

void DeviceFeed::run() {
  while (!mIsToEnd) {
    sendOne();
    // A device sends at most every 16 ms; bursts are harder.
    pause(mRandom.once(10) ? mRandom.from(20, 200) : mRandom.from(0, 8));
  }
}

void DeviceFeed::sendOne() {
  if (mRandom.once(400)) return loseDaemon();
  if (mRandom.once(60)) controller::setAdvancedSettings(mRandom.from(0, 999), mRandom.once(2) ? 1 : 0);
  if (mRandom.once(300)) controller::setReadsBlock(mRandom.once(2));
  ++mEventsSent;
  if (!mRandom.once(12)) return moveCap();
  const bool isFunction = mRandom.once(3);
  controller::deliver(
      {isFunction ? APPL_FUNC_START + mRandom.from(0, 40) : mRandom.of(kCommandCodes), {}, 0, 0});
}

void DeviceFeed::moveCap() {
  controller::Event event;
  event.code = mRandom.once(2) ? -1 : -2147483647 - 1;
  const int reach = mRandom.of(kReaches);
  for (std::int16_t& axis : event.axes)
    axis = static_cast<std::int16_t>(mRandom.once(3) ? 0 : mRandom.from(-reach - (reach == 32767), reach));
  controller::deliver(event);
}

/// Long enough, now and then, for the watch loop to notice.
void DeviceFeed::loseDaemon() {
  ++mLosses;
  controller::setDown(true);
  pause(mRandom.once(4) ? mRandom.from(2000, 2500) : mRandom.from(1, 300));
  controller::setDown(false);
}

}  // namespace soak
