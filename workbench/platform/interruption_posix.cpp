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

// The only type that a signal handler may write portably.
volatile std::sig_atomic_t theSignal = 0;
std::array<struct sigaction, kWishes.size()> theOldActions{};

// A signal handler: only functions that are safe there may be called, so nothing is printed.
void note(int signalNumber) {
  if (theSignal == 0) {
    theSignal = signalNumber;
    return;
  }
  // A second request ends the process: the run may hang in the module.
  std::signal(signalNumber, SIG_DFL);
  // Delivered when this handler returns, and then ends the process with the status that a shell expects.
  std::raise(signalNumber);
}

}  // namespace

InterruptionGuard::InterruptionGuard() {
  theSignal = 0;
  struct sigaction action = {};
  action.sa_handler = note;
  // Otherwise the signal would make reads and writes of the run fail with EINTR.
  action.sa_flags = SA_RESTART;
  sigemptyset(&action.sa_mask);
  for (std::size_t i = 0; i < kWishes.size(); ++i) {
    // Kept for the destructor, and read first to see whether the signal is ignored.
    sigaction(kWishes[i].signal, nullptr, &theOldActions[i]);
    // Shells start background jobs with SIGINT ignored, and nohup ignores SIGHUP. That is kept.
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
