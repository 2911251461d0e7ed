#include "fault_points.h"

#include "standin_win32_faults.h"

namespace standin::windows {
namespace {

struct Point {
  const char* name;
  bool canFail;
};

/// In the order of the enumeration.
constexpr Point kPoints[] = {
    {"SetTimer", true},
    {"KillTimer", true},
    {"GetTickCount", false},
    {"Beep", true},
    {"MessageBoxW", true},
    {"GetModuleFileNameW", true},
    {"WideCharToMultiByte", true},
    {"GetCursorPos", true},
    {"WindowFromPoint", true},
    {"GetWindowRect", true},
    {"GetClassNameW", true},
    {"GetScrollInfo", true},
    {"SendMessageW", false},
};

}  // namespace

FaultRegistry& faults() {
  static FaultRegistry* const registry = [] {
    auto* const made = new FaultRegistry;
    for (const Point& point : kPoints) made->add(point.name, point.canFail);
    return made;
  }();
  return *registry;
}

bool isToFail(Function function) {
  return faults().hit(static_cast<std::size_t>(function));
}

}  // namespace standin::windows
