#include "workbench/platform/beeps.h"
#include "workbench/platform/control_window.h"
#include "workbench/platform/desktop.h"

#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>

namespace workbench {
namespace {

std::unique_ptr<ControlWindow> windowP;
std::function<void(const DesktopMessage&)> listener;
HHOOK hook = nullptr;
HWND lastBox = nullptr;

std::wstring textOf(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  // The length may be an overestimate; the number of characters copied is exact.
  text.resize(static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

bool isBox(HWND window) {
  wchar_t name[16] = {};
  GetClassNameW(window, name, 16);
  // The system's class of all dialog boxes, message boxes included.
  return std::wstring(name) == L"#32770";
}

/// A message box has its text in the control of this number.
constexpr int kBoxTextId = 0xFFFF;

/// No user presses the button of a box during a session.
LRESULT CALLBACK confirmBoxes(int code, WPARAM wParam, LPARAM lParam) {
  const auto window = reinterpret_cast<HWND>(wParam);
  // A box may be activated several times, but it is reported and confirmed once.
  if (code == HCBT_ACTIVATE && window != lastBox && isBox(window)) {
    lastBox = window;
    if (listener) listener({false, textOf(window) + L"\n" + textOf(GetDlgItem(window, kBoxTextId))});
    // Posted and not sent: the box handles it in its own message loop, after it has finished opening.
    PostMessageW(window, WM_COMMAND, IDOK, 0);
  }
  // The system may give the next box the same handle.
  if (code == HCBT_DESTROYWND && window == lastBox) lastBox = nullptr;
  return CallNextHookEx(hook, code, wParam, lParam);
}

HWND controlFor(PointerTarget target) {
  switch (target) {
    case PointerTarget::kCanvas:
      return windowP->canvas();
    case PointerTarget::kTree:
      return windowP->tree();
    case PointerTarget::kList:
      return windowP->listBox();
    case PointerTarget::kEdit:
      return windowP->edit();
    case PointerTarget::kQt:
      return windowP->widget();
    case PointerTarget::kNone:
      return nullptr;
  }
  return nullptr;
}

}  // namespace

void resetDesktop() {
  // The old window is destroyed before the new one is made, so that only one of them is under the pointer.
  windowP.reset();
  windowP = std::make_unique<ControlWindow>();
  windowP->pointAt(windowP->canvas());
}

void listenToDesktop(std::function<void(const DesktopMessage&)> newListener) {
  // The hook is removed before the listener: it must not call one that is gone.
  if (hook != nullptr) UnhookWindowsHookEx(std::exchange(hook, nullptr));
  listener = nullptr;
  listenToBeeps({});
  if (!newListener) return;
  hook = SetWindowsHookExW(WH_CBT, confirmBoxes, nullptr, GetCurrentThreadId());
  // Nobody would press the button of the first box.
  if (hook == nullptr) throw std::runtime_error("message boxes cannot be seen (SetWindowsHookEx failed)");
  listener = std::move(newListener);
  listenToBeeps([](DWORD hertz, DWORD durationMs) {
    listener({true, std::to_wstring(hertz) + L" Hz, " + std::to_wstring(durationMs) + L" ms"});
  });
}

void movePointer(PointerTarget target) {
  windowP->pointAt(controlFor(target));
}

bool isErrorTerminal() {
  // The progress line uses escape sequences, which a console interprets only when this mode is on.
  const HANDLE console = GetStdHandle(STD_ERROR_HANDLE);
  DWORD mode = 0;
  return GetConsoleMode(console, &mode) && SetConsoleMode(console, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}

}  // namespace workbench
