#include "workbench/desktop.h"

#include <unistd.h>

#include <cstdlib>
#include <utility>

#include "standin_desktop.h"
#include "standin_messages.h"

namespace workbench {
namespace {

namespace windows = standin::windows;

DesktopMessage toDesktopMessage(const windows::UserMessage& message) {
  if (message.kind == windows::UserMessage::Kind::kBox)
    return {false, message.caption + L"\n" + message.text};
  return {true, std::to_wstring(message.frequency) + L" Hz, " + std::to_wstring(message.durationMs) + L" ms"};
}

const char* placeName(PointerTarget target) {
  switch (target) {
    case PointerTarget::kCanvas:
      return "canvas";
    case PointerTarget::kTree:
      return "tree";
    case PointerTarget::kList:
      return "list";
    case PointerTarget::kEdit:
      return "edit";
    case PointerTarget::kQt:
      return "qt";
    case PointerTarget::kNone:
      return "none";
  }
  return "none";
}

}  // namespace

void resetDesktop() {
  windows::clearUserMessages();
  standin::desktop::makeStandardDesktop();
}

void listenToDesktop(std::function<void(const DesktopMessage&)> listener) {
  if (!listener) return windows::setUserMessageListener({});
  windows::setUserMessageListener(
      [told = std::move(listener)](const windows::UserMessage& message) { told(toDesktopMessage(message)); });
}

void movePointer(PointerTarget target) {
  standin::desktop::pointAt(placeName(target));
}

void setUserProfile(const std::filesystem::path& folder) {
  setenv("USERPROFILE", folder.c_str(), 1);
}

bool isErrorTerminal() {
  return isatty(STDERR_FILENO) != 0;
}

}  // namespace workbench
