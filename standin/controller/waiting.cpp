#include "standin/controller/waiting.h"

#include "standin_clock.h"

namespace standin::controller {

struct Waiting::State {
  clock::Alarm alarm;
};

Waiting::Waiting() : mStateP(std::make_unique<State>()) {}
Waiting::~Waiting() = default;
void Waiting::wait(std::uint32_t ms) {
  mStateP->alarm.wait(ms);
}
void Waiting::ring() {
  mStateP->alarm.ring();
}
std::int64_t Waiting::nowMs() {
  return clock::nowMs();
}

}  // namespace standin::controller
