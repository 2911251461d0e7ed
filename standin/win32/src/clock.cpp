#include "clock_core.h"
#include "operations.h"
#include "standin_clock.h"
#include "windows.h"

#include <thread>
#include <utility>

namespace standin::clock {

void start(Kind kind, std::uint32_t frameMs, double speed) {
  Clock::instance().start(kind, frameMs, speed);
}
void stop() {
  Clock::instance().stop();
}
std::int64_t nowMs() {
  return Clock::instance().nowMs();
}
Kind kind() {
  return Clock::instance().kind();
}
bool isMainThread() {
  return Clock::instance().isMainThread();
}
void setTickBase(std::uint32_t ticks) {
  Clock::instance().setTickBase(ticks);
}
void advanceTo(std::int64_t timeMs) {
  Clock::instance().advanceTo(timeMs);
}
void drawn() {
  Clock::instance().drawn();
}
void schedule(std::int64_t timeMs, std::function<void()> call) {
  Clock::instance().schedule(timeMs, std::move(call));
}
std::optional<std::int64_t> nextDue() {
  return Clock::instance().nextDue();
}
std::optional<std::int64_t> nextTimer() {
  return Clock::instance().nextTimer();
}
bool runDueTimer() {
  return Clock::instance().runDueTimer();
}
std::size_t timerCount() {
  return Clock::instance().timerCount();
}
bool settle() {
  return Clock::instance().settle();
}
void setPatience(std::uint32_t ms) {
  Clock::instance().setPatience(ms);
}
std::uint64_t stalls() {
  return Clock::instance().stalls();
}
std::size_t otherThreads() {
  return Clock::instance().otherThreads();
}

struct Alarm::State {
  Bell bell;
};

Alarm::Alarm() : mStateP(std::make_unique<State>()) {}
Alarm::~Alarm() = default;
bool Alarm::wait(std::uint32_t ms) {
  return Clock::instance().wait(ms, &mStateP->bell);
}
void Alarm::ring() {
  Clock::instance().ring(mStateP->bell);
}

}  // namespace standin::clock

using standin::Result;
using standin::clock::Clock;
using standin::windows::Operation;

namespace {

const Operation kSetTimer("SetTimer", Result::kTellsFailure);
const Operation kKillTimer("KillTimer", Result::kTellsFailure);
const Operation kGetTickCount("GetTickCount", Result::kTellsNothing);

}  // namespace

UINT_PTR SetTimer(HWND window, UINT_PTR id, UINT periodMs, TIMERPROC proc) {
  if (kSetTimer.hit() || window != nullptr || proc == nullptr) return 0;
  return Clock::instance().setTimer(id, periodMs, proc);
}

BOOL KillTimer(HWND window, UINT_PTR id) {
  if (kKillTimer.hit()) return FALSE;
  return window == nullptr && Clock::instance().killTimer(id) ? TRUE : FALSE;
}

DWORD GetTickCount() {
  kGetTickCount.hit();
  return Clock::instance().readTicks();
}

void Sleep(DWORD ms) {
  Clock::instance().wait(ms, nullptr);
}
