#include "standin_desktop.h"
#include "standin_messages.h"
#include "windows.h"
#include "workbench/platform/desktop.h"
#include "workbench/text_input.h"

#include <unistd.h>

#include <cassert>
#include <optional>
#include <utility>

namespace workbench {
namespace {

namespace windows = standin::windows;

DesktopMessage toDesktopMessage(const windows::UserMessage& message) {
  if (message.kind == windows::UserMessage::Kind::kBox)
    return {false, message.caption + L"\n" + message.text};
  return {true, std::to_wstring(message.frequency) + L" Hz, " + std::to_wstring(message.durationMs) + L" ms"};
}

/// The simulated desktop names its places as sessions do.
const char* placeName(PointerTarget target) {
  for (const auto& named : kPointerTargets)
    if (named.value == target) return named.name;
  assert(false && "a pointer target without a name");
  return "none";
}

standin::desktop::StandardDesktop theDesktop;

std::optional<ReportScrollBar> barOf(HWND window, int which) {
  const auto bar = standin::desktop::scrollBar(window, which);
  if (!bar) return std::nullopt;
  return ReportScrollBar{bar->minimum, bar->maximum, static_cast<int>(bar->page), bar->position};
}

ReportWindow windowState(HWND window) {
  wchar_t name[64] = {};
  RECT rect{};
  GetClassNameW(window, name, 64);
  GetWindowRect(window, &rect);
  return {toUtf8(std::wstring_view(name)),
          {rect.left, rect.top, rect.right, rect.bottom},
          barOf(window, SB_VERT),
          barOf(window, SB_HORZ)};
}

}  // namespace

void resetDesktop() {
  windows::clearUserMessages();
  theDesktop = standin::desktop::makeStandardDesktop();
}

ReportDesktop desktopState() {
  ReportDesktop state;
  // A parent before its children, as the report expects; the order of the list is that of the drawing on the
  // page.
  for (const HWND window : {theDesktop.frame, theDesktop.canvas, theDesktop.palette, theDesktop.tree,
                            theDesktop.group, theDesktop.list, theDesktop.edit, theDesktop.qt})
    state.windows.push_back(windowState(window));
  POINT pointer{};
  GetCursorPos(&pointer);
  state.pointer = {pointer.x, pointer.y};
  return state;
}

void listenToDesktop(std::function<void(const DesktopMessage&)> listener) {
  // Wrapping an empty function would make a listener that throws when it is called.
  if (!listener) return windows::setUserMessageListener({});
  windows::setUserMessageListener([report = std::move(listener)](const windows::UserMessage& message) {
    report(toDesktopMessage(message));
  });
}

void movePointer(PointerTarget target) {
  standin::desktop::pointAt(placeName(target));
}

bool isErrorTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

}  // namespace workbench
