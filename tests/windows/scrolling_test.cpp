// The cap scrolls real controls under the real mouse pointer.
#include "tests/windows/module_run.h"
#include "workbench/platform/control_window.h"

#include <windows.h>
#include <commctrl.h>

namespace {

int position(HWND window, int bar) {
  SCROLLINFO info{};
  info.cbSize = sizeof info;
  info.fMask = SIF_POS;
  GetScrollInfo(window, bar, &info);
  return info.nPos;
}

class RealScrolling : public ModuleRun {
 protected:
  RealScrolling() : mModule(LM_MODULE_FILE) { mModule.send(AcRx::kInitAppMsg); }
  ~RealScrolling() override { mModule.send(AcRx::kUnloadAppMsg); }

  void deflect(std::int16_t x, std::int16_t y, std::int16_t z) {
    standin::controller::deliver({-1, {x, y, z, 0, 0, 0}, 0, 0});
  }
  /// Down and up again by the cap's push along its vertical axes, with the control's bar read back.
  void scrollDownAndUp(HWND control) {
    mWindow.pointAt(control);
    deflect(0, -300, 0);
    const bool isDown = serve(0, [control] { return position(control, SB_VERT) > 3; });
    const int lowest = position(control, SB_VERT);
    deflect(0, 300, 0);
    const bool isUp = serve(0, [control, lowest] { return position(control, SB_VERT) < lowest; });
    deflect(0, 0, 0);
    EXPECT_TRUE(isDown) << "lowest " << lowest;
    EXPECT_TRUE(isUp) << "lowest " << lowest;
    EXPECT_EQ(mHost.mUpdates.size(), 0u) << "the view moved instead";
  }

  workbench::ControlWindow mWindow;
  LoadedModule mModule;
};

TEST_F(RealScrolling, CapScrollsATreeView) {
  scrollDownAndUp(mWindow.tree());
}
TEST_F(RealScrolling, CapScrollsAListView) {
  scrollDownAndUp(mWindow.list());
}
TEST_F(RealScrolling, CapScrollsAListBoxBelowAGroupBox) {
  scrollDownAndUp(mWindow.listBox());
}
TEST_F(RealScrolling, CapScrollsAnEditField) {
  scrollDownAndUp(mWindow.edit());
}

TEST_F(RealScrolling, CapScrollsAnEditFieldSideways) {
  mWindow.pointAt(mWindow.edit());
  deflect(300, 0, 0);
  EXPECT_TRUE(serve(0, [this] { return position(mWindow.edit(), SB_HORZ) > 0; }));
  deflect(-300, 0, 0);
  EXPECT_TRUE(serve(0, [this] { return position(mWindow.edit(), SB_HORZ) == 0; }));
  deflect(0, 0, 0);
  EXPECT_EQ(mHost.mUpdates.size(), 0u);
}

TEST_F(RealScrolling, CapScrollsAWidgetByTheWheel) {
  mWindow.pointAt(mWindow.widget());
  deflect(0, -300, 0);
  EXPECT_TRUE(serve(0, [this] { return mWindow.wheelTurns() < 0; }));
  deflect(0, 300, 0);
  EXPECT_TRUE(serve(0, [this] { return mWindow.wheelTurns() > 0; }));
  deflect(0, 0, 0);
  EXPECT_EQ(mHost.mUpdates.size(), 0u);
}

TEST_F(RealScrolling, CapScrollsNothingOverTheCanvas) {
  mWindow.pointAt(mWindow.canvas());
  deflect(0, -300, 0);
  EXPECT_TRUE(serve(0, [this] { return mHost.mUpdates.size() > 0; }));
  deflect(0, 0, 0);
}

}  // namespace
