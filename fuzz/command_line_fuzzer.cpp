/// Any bytes can be typed or sent to the host's command line: afterwards two ESC leave nothing under way.
#include "standin/objectarx/host_control.h"

#include <cstdlib>
#include <string>

namespace {

namespace host = standin::host;

void openDrawing() {
  host::start();
  auto drawing = std::make_unique<standin::Drawing>();
  drawing->add(standin::makeLine({0x2A}, {0, 0, 0}, {10, 5, 2}));
  drawing->add(standin::makeCircle({0x2B}, {5, 5, 0}, {0, 0, 1}, 3));
  host::openDocument(std::move(drawing));
}

void check(bool isRight) {
  if (!isRight) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dataP, std::size_t size) {
  openDrawing();
  host::type(std::wstring(dataP, dataP + size));
  host::type(L"\x1b\x1b");
  check(host::variable(L"CMDACTIVE") == L"0");
  check(host::selection().empty());
  check(host::camera(host::currentViewport()).has_value());
  const host::Counts counts = host::counts();
  check(counts.openObjects == 0 && counts.lockDepth == 0 && counts.breachesInAll == 0);
  host::closeDocument();
  return 0;
}
