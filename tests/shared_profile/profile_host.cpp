/// profile_host LIVES SPEED: a host that loads the module, lets the cap move and unloads the module, LIVES
/// times. The profile is that of the environment. SPEED is that of the clock; Windows has its own.
#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "standin_clock.h"
#include "tests/module_life/loaded_module.h"

#include "rxdefs.h"

#include <cstdlib>
#include <memory>

namespace clock_ = standin::clock;
namespace host = standin::host;

namespace {

constexpr std::int64_t kLifeMs = 300;

void startHost(double speed) {
  clock_::start(clock_::Kind::kReal, 1, speed);
  standin::controller::reset();
  host::start([] { clock_::drawn(); });
  auto drawing = std::make_unique<standin::Drawing>();
  drawing->add(standin::makeLine({0x10, "0", 256}, {0, 0, 0}, {10, 5, 2}));
  host::openDocument(std::move(drawing));
}

void serve(std::int64_t ms) {
  const std::int64_t end = clock_::nowMs() + ms;
  while (clock_::nowMs() < end) {
    clock_::advanceTo(clock_::nowMs() + 10);
    clock_::runDueTimer();
  }
}

void liveOnce() {
  const LoadedModule module(LM_MODULE_FILE);
  module.send(AcRx::kInitAppMsg);
  standin::controller::deliver({-1, {50, 0, 0, 0, 20, 0}, 0, 0});
  serve(kLifeMs);
  module.send(AcRx::kUnloadAppMsg);
}

}  // namespace

int main(int count, char** arguments) {
  if (count != 3) return 2;
  startHost(std::atof(arguments[2]));
  for (int life = std::atoi(arguments[1]); life > 0; --life) liveOnce();
  host::closeDocument();
  clock_::stop();
  return 0;
}
