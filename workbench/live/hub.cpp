#include "workbench/live/hub.h"

#include <chrono>
#include <utility>

namespace workbench {
namespace {

CapGuard::Time now() {
  return std::chrono::steady_clock::now();
}

template <typename Message>
bool isA(const PageMessage& message) {
  return std::holds_alternative<Message>(message);
}

}  // namespace

void Hub::opened(PageId page) {
  mGuard.opened(page);
  noteDriver();
  mInbox.put(Errand{page, PageArrived{}});
}

void Hub::closed(PageId page) {
  if (mGuard.closed(page)) letGo();
  noteDriver();
}

bool Hub::received(PageId page, std::string_view text) {
  mGuard.heard(page, now());
  try {
    return handle(page, parsePageMessage(text));
  } catch (const PageMessageError&) {
    // Our page sends no such message, so this is another program or a page of another version.
    return false;
  }
}

bool Hub::handle(PageId page, PageMessage message) {
  if (isA<PageIsAwake>(message)) return true;
  if (isA<PageHasSeen>(message)) {
    if (Server* const serverP = mServerP) serverP->pictureSeen(page);
    return true;
  }
  if (isA<PageTakesOver>(message)) {
    if (mGuard.takenOver(page)) letGo();
    noteDriver();
    return true;
  }
  // A page that watches may just have lost the cap to another one; what it sent before it knew has no effect.
  if (page != mGuard.driver()) return true;
  if (auto* const deviceP = std::get_if<PageDeviceAction>(&message)) {
    const auto* const eventP = std::get_if<DeviceEvent>(&deviceP->action);
    // What the device sends while it is down is lost: the module keeps the deflection that it has read.
    if (eventP != nullptr && eventP->code < 0 && !mIsDeviceDown) mGuard.moved(eventP->axes, now());
    if (const auto* const powerP = std::get_if<DevicePower>(&deviceP->action)) mIsDeviceDown = powerP->isDown;
    mInbox.put(std::move(*deviceP));
    return true;
  }
  Errand errand{page, PageSaves{}};
  if (auto* const userP = std::get_if<PageUserAction>(&message)) errand.what = std::move(*userP);
  if (auto* const opensP = std::get_if<PageOpens>(&message)) errand.what = *opensP;
  if (auto* const changesP = std::get_if<PageChangesSettings>(&message)) errand.what = std::move(*changesP);
  if (isA<PageWantsReport>(message)) errand.what = PageWantsReport{};
  return mInbox.put(std::move(errand));
}

void Hub::looked() {
  if (mGuard.looked(now())) letGo();
}

void Hub::letGo() {
  // While the device is down its events are lost, and the module goes on with the last deflection it has
  // read.
  if (mIsDeviceDown) mInbox.put(PageDeviceAction{DevicePower{false}, "device up"});
  mIsDeviceDown = false;
  mInbox.put(PageDeviceAction{DeviceEvent{}, "motion 0 0 0 0 0 0"});
}

void Hub::noteDriver() {
  if (mDriver.exchange(mGuard.driver()) != mGuard.driver()) mInbox.put(Errand{0, DriverChanged{}});
}

}  // namespace workbench
