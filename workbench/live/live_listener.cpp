#include "workbench/live/live_listener.h"

#include "standin_clock.h"
#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <utility>

namespace workbench {
namespace {

/// While the host is in a long call nothing is taken; a module that prints in a loop must not fill the
/// memory.
constexpr std::size_t kMostLines = 10000;
constexpr std::size_t kMostBreaches = 100;

}  // namespace

LiveListener::LiveListener() : Recorder({}) {
  listenToDesktop([this](const DesktopMessage& message) {
    add(message.isBeep ? LineKind::kBeep : LineKind::kBox, message.text);
  });
}

LiveListener::News LiveListener::take() {
  const std::lock_guard lock(mMutex);
  return std::exchange(mNews, {});
}

void LiveListener::viewUpdated(int, const standin::host::Camera&) {
  const std::lock_guard lock(mMutex);
  ++mNews.passes;
}

void LiveListener::paperChanged(int, const standin::host::PaperView&) {
  const std::lock_guard lock(mMutex);
  ++mNews.passes;
}

void LiveListener::textSent(const std::wstring& text, bool activate) {
  add(activate ? LineKind::kSendActivate : LineKind::kSend, text);
}

void LiveListener::modulePrinted(const std::wstring& text) {
  add(LineKind::kPrint, text);
}

void LiveListener::hostPrinted(const std::wstring& text) {
  add(LineKind::kHost, text);
}

void LiveListener::ruleBroken(const std::string& breach) {
  const std::lock_guard lock(mMutex);
  const bool isKnown =
      std::find(mKnownBreaches.begin(), mKnownBreaches.end(), breach) != mKnownBreaches.end();
  if (isKnown || mKnownBreaches.size() >= kMostBreaches) return;
  mKnownBreaches.push_back(breach);
  mNews.breaches.push_back(breach);
}

void LiveListener::add(LineKind kind, const std::wstring& text) {
  const std::lock_guard lock(mMutex);
  if (mNews.lines.size() < kMostLines)
    mNews.lines.push_back({standin::clock::nowMs(), kind, toUtf8(std::wstring_view(text))});
}

}  // namespace workbench
