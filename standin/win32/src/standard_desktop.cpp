/// The ready-made desktop of tests and sessions: a canvas, and a palette with every kind of control.
#include "standin_desktop.h"

#include <array>
#include <string_view>

namespace standin::desktop {
namespace {

struct Place {
  std::string_view name;
  POINT point;
};

/// Points in the middle of the windows that makeStandardDesktop() lays out.
constexpr std::array<Place, 6> kPlaces = {{{"canvas", {600, 450}},
                                           {"tree", {1300, 150}},
                                           {"list", {1300, 400}},
                                           {"edit", {1300, 600}},
                                           {"qt", {1300, 800}},
                                           {"none", {-100, -100}}}};

HWND inside(HWND parent, const wchar_t* className, const RECT& rect) {
  WindowSpec spec;
  spec.className = className;
  spec.parent = parent;
  spec.rect = rect;
  return createWindow(spec);
}

HWND qtWidget(HWND parent, const RECT& rect) {
  WindowSpec spec;
  spec.className = L"QWidget";
  spec.parent = parent;
  spec.rect = rect;
  spec.vertical = ScrollBar{0, 500, 20, 0};
  // The bar is the widget's own: GetScrollInfo must not find it.
  spec.isOwnScrolling = true;
  return createWindow(spec);
}

}  // namespace

StandardDesktop makeStandardDesktop() {
  clear();
  StandardDesktop made;
  made.frame = inside(nullptr, L"CadFrame", {0, 0, 1400, 900});
  made.canvas = inside(made.frame, L"CadView", {0, 50, 1200, 850});
  made.palette = inside(made.frame, L"CadPalette", {1200, 50, 1400, 850});
  // Class names are those of the Windows controls: the module recognises a control by its class.
  made.tree = inside(made.palette, L"SysTreeView32", {1210, 60, 1390, 260});
  // Before the list, so in front of it: a group box covers what it frames, and hit tests must look below it.
  made.group = inside(made.palette, L"Button", {1205, 300, 1395, 510});
  made.list = inside(made.palette, L"SysListView32", {1210, 310, 1390, 500});
  made.edit = inside(made.palette, L"Edit", {1210, 550, 1390, 650});
  made.qt = qtWidget(made.palette, {1210, 700, 1390, 840});
  setScrollBar(made.tree, SB_VERT, {0, 2000, 40, 0});
  setScrollBar(made.list, SB_VERT, {0, 150, 20, 0});
  setScrollBar(made.edit, SB_VERT, {0, 60, 10, 0});
  // The only control with both bars.
  setScrollBar(made.edit, SB_HORZ, {0, 300, 80, 0});
  pointAt("canvas");
  return made;
}

bool pointAt(const std::string& place) {
  for (const Place& candidate : kPlaces) {
    if (candidate.name != place) continue;
    setPointer(candidate.point);
    return true;
  }
  return false;
}

}  // namespace standin::desktop
