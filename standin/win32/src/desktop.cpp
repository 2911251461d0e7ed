/// The simulated desktop: z-order, what the pointer hits, and what scroll messages do to a window.
#include "desktop.h"

#include "scrolling.h"

#include <algorithm>
#include <iterator>

namespace standin::desktop {

ScrollBar* Window::bar(int bar) {
  std::optional<ScrollBar>* const held = bar == SB_VERT   ? &spec.vertical
                                         : bar == SB_HORZ ? &spec.horizontal
                                                          : nullptr;
  return held != nullptr && held->has_value() ? &**held : nullptr;
}

Desktop& Desktop::instance() {
  static Desktop desktop;
  return desktop;
}

/// Handles are never used again: a test can use one of a destroyed window and be sure that it names none.
HWND Desktop::create(const WindowSpec& spec) {
  if (spec.parent != nullptr && find(spec.parent) == nullptr) return nullptr;
  // On Windows only a top-level window has an owner.
  if (spec.owner != nullptr && (find(spec.owner) == nullptr || spec.parent != nullptr)) return nullptr;
  // Even, as the window handles of Windows are.
  mLastHandle += 2;
  const HWND handle = reinterpret_cast<HWND>(mLastHandle);
  Window& window = mWindows[handle];
  window.spec = spec;
  for (const int kind : {SB_VERT, SB_HORZ})
    // Windows never holds a position outside the range, whatever a window is made with.
    if (ScrollBar* const bar = window.bar(kind)) *bar = limited(*bar);
  std::vector<HWND>& order = siblings(window);
  // A new top-level window is in front; a new child is behind its older siblings.
  order.insert(spec.parent == nullptr ? order.begin() : order.end(), handle);
  return handle;
}

bool Desktop::destroy(HWND handle) {
  Window* const window = find(handle);
  if (window == nullptr) return false;
  // From the front each time: every call removes that child from the list.
  while (!window->children.empty()) destroy(window->children.front());
  // Windows destroys owned windows with their owner, although they are siblings of it.
  for (const HWND owned : ownedBy(handle)) destroy(owned);
  std::vector<HWND>& order = siblings(*window);
  order.erase(std::find(order.begin(), order.end(), handle));
  mWindows.erase(handle);
  return true;
}

bool Desktop::raise(HWND handle) {
  const Window* const window = find(handle);
  if (window == nullptr) return false;
  std::vector<HWND>& order = siblings(*window);
  const auto place = std::find(order.begin(), order.end(), handle);
  // The others keep their order among themselves.
  std::rotate(order.begin(), place, place + 1);
  // The back one first, so that they keep their order.
  const std::vector<HWND> owned = ownedBy(handle);
  for (auto next = owned.rbegin(); next != owned.rend(); ++next) raise(*next);
  return true;
}

std::vector<HWND> Desktop::ownedBy(HWND handle) {
  std::vector<HWND> owned;
  std::copy_if(mTopLevel.begin(), mTopLevel.end(), std::back_inserter(owned),
               [&](HWND window) { return find(window)->spec.owner == handle; });
  return owned;
}

void Desktop::clear() {
  // The handles count on: one of the desktop before must not name a window of this one.
  mWindows.clear();
  mTopLevel.clear();
  pointer = {0, 0};
  // With its memory: a long run must not seem to grow.
  std::vector<SentMessage>().swap(sent);
}

Window* Desktop::find(HWND handle) {
  const auto found = mWindows.find(handle);
  return found == mWindows.end() ? nullptr : &found->second;
}

std::vector<HWND>& Desktop::siblings(const Window& window) {
  Window* const parent = find(window.spec.parent);
  return parent == nullptr ? mTopLevel : parent->children;
}

HWND Desktop::topmostAt(const std::vector<HWND>& windows, POINT point) {
  const auto found = std::find_if(windows.begin(), windows.end(), [&](HWND handle) {
    const WindowSpec& spec = find(handle)->spec;
    // Windows passes over hidden and disabled windows here: the point belongs to what is below them.
    return spec.isShown && spec.isEnabled && PtInRect(&spec.rect, point) != FALSE;
  });
  return found == windows.end() ? nullptr : *found;
}

HWND Desktop::at(POINT point) {
  // Down from the top level: a child is only hit inside its parent, and the innermost window counts.
  HWND seen = nullptr;
  for (HWND next = topmostAt(mTopLevel, point); next != nullptr;
       next = topmostAt(find(next)->children, point))
    seen = next;
  return seen;
}

bool Desktop::isVisible(HWND handle) {
  const Window* window = find(handle);
  if (window == nullptr) return false;
  // A shown window in a hidden parent is not visible: every level counts.
  for (; window != nullptr; window = find(window->spec.parent))
    if (!window->spec.isShown) return false;
  return true;
}

void Desktop::send(const SentMessage& message) {
  // Recorded even for a handle that is no window: a test must see where a module sent it.
  sent.push_back(message);
  Window* const window = find(message.window);
  if (window == nullptr) return;
  if (message.message == WM_MOUSEWHEEL) {
    // The wheel moves a window that draws its own bars too: it needs no bar of the system's.
    turnWheel(message.window, GET_WHEEL_DELTA_WPARAM(message.wParam));
    return;
  }
  const bool isVertical = message.message == WM_VSCROLL;
  if ((!isVertical && message.message != WM_HSCROLL) || window->spec.isOwnScrolling) return;
  ScrollBar* const bar = window->bar(isVertical ? SB_VERT : SB_HORZ);
  if (bar != nullptr) *bar = scrolledBy(*bar, LOWORD(message.wParam));
}

/// A window that has no bar to scroll passes the turn on to its parent, as the default procedure does.
void Desktop::turnWheel(HWND handle, int delta) {
  Window* window = find(handle);
  while (window != nullptr && window->bar(SB_VERT) == nullptr) window = find(window->spec.parent);
  if (window == nullptr) return;
  ScrollBar& bar = *window->bar(SB_VERT);
  bar = wheeledBy(bar, delta);
}

HWND createWindow(const WindowSpec& spec) {
  return Desktop::instance().create(spec);
}
bool destroyWindow(HWND window) {
  return Desktop::instance().destroy(window);
}
void clear() {
  Desktop::instance().clear();
}
bool raise(HWND window) {
  return Desktop::instance().raise(window);
}
void setPointer(POINT point) {
  Desktop::instance().pointer = point;
}
std::vector<SentMessage> sentMessages() {
  return Desktop::instance().sent;
}
void clearSentMessages() {
  Desktop::instance().sent.clear();
}

bool setShown(HWND window, bool isShown) {
  Window* const found = Desktop::instance().find(window);
  if (found == nullptr) return false;
  found->spec.isShown = isShown;
  return true;
}

bool setEnabled(HWND window, bool isEnabled) {
  Window* const found = Desktop::instance().find(window);
  if (found == nullptr) return false;
  found->spec.isEnabled = isEnabled;
  return true;
}

std::optional<ScrollBar> scrollBar(HWND window, int bar) {
  Window* const found = Desktop::instance().find(window);
  const ScrollBar* const held = found == nullptr ? nullptr : found->bar(bar);
  return held == nullptr ? std::nullopt : std::optional<ScrollBar>(*held);
}

bool setScrollBar(HWND window, int bar, const ScrollBar& state) {
  Window* const found = Desktop::instance().find(window);
  if (found == nullptr || (bar != SB_VERT && bar != SB_HORZ)) return false;
  // A window without this bar gets one, as on Windows.
  (bar == SB_VERT ? found->spec.vertical : found->spec.horizontal) = limited(state);
  return true;
}

std::size_t updates(HWND window) {
  const Window* const found = Desktop::instance().find(window);
  return found == nullptr ? 0 : found->updates;
}

}  // namespace standin::desktop
