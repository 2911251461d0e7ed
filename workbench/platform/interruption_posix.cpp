#include "workbench/platform/interruption.h"

#include <array>
#include <csignal>

namespace workbench {
namespace {

struct Wish {
  int signal;
  const char* name;
};
constexpr std::array<Wish, 3> kWishes = {{{SIGINT, "SIGINT"}, {SIGTERM, "SIGTERM"}, {SIGHUP, "SIGHUP"}}};

volatile std::sig_atomic_t theSignal = 0;
std::array<struct sigaction, kWishes.size()> theOldActions{};

void note(int signalNumber) {
  if (theSignal == 0) {
    theSignal = signalNumber;
    return;
  }
  // The user insists: the run may hang in the module.
  std::signal(signalNumber, SIG_DFL);
  std::raise(signalNumber);
}

}  // namespace

InterruptionGuard::InterruptionGuard() {
  theSignal = 0;
  struct sigaction action = {};
  action.sa_handler = note;
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kWishes.size(); ++i) {
    sigaction(kWishes[i].signal, nullptr, &theOldActions[i]);
    // A shell has a background job ignore SIGINT, and nohup SIGHUP: that holds.
    if (theOldActions[i].sa_handler != SIG_IGN) sigaction(kWishes[i].signal, &action, nullptr);
  }
}

InterruptionGuard::~InterruptionGuard() {
  for (std::size_t i = 0; i < kWishes.size(); ++i) sigaction(kWishes[i].signal, &theOldActions[i], nullptr);
}

const char* interruption() {
  for (const Wish& wish : kWishes)
    if (wish.signal == theSignal) return wish.name;
  return nullptr;
}

}  // namespace workbench
