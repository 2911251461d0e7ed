// -VIEW and ZOOM.
#include "built_ins.h"
#include "printing.h"
#include "text.h"
#include "view_actions.h"

#include <cwctype>

namespace standin::host {
namespace {

struct Preset {
  const wchar_t* name;
  AcGeVector3d from;  ///< direction from the target to the camera
};

/// Front looks along +Y: the camera is on the negative side, hence the minus sign. The same for left and
/// bottom.
const Preset kPresets[] = {
    {L"FRONT", {0, -1, 0}}, {L"BACK", {0, 1, 0}}, {L"LEFT", {-1, 0, 0}},
    {L"RIGHT", {1, 0, 0}},  {L"TOP", {0, 0, 1}},  {L"BOTTOM", {0, 0, -1}},
};

class ViewCommand final : public ActiveCommand {
 public:
  std::wstring prompt() const override { return L"Enter an option [Top/Bottom/Front/BAck/Left/Right]:"; }

  Next input(const std::wstring& text) override {
    if (text.empty()) return Next::kDone;
    for (const Preset& preset : kPresets) {
      if (keyword(text) != preset.name) continue;
      // The frame's rule for "up" gives Y for top and bottom, and Z for the sides.
      if (!lookFrom(frameOf(preset.from, 0))) hostPrint(L"** Command not allowed in Paper space **");
      return Next::kDone;
    }
    hostPrint(L"Invalid option keyword.");
    return Next::kMore;
  }
};

class ZoomCommand final : public ActiveCommand {
 public:
  std::wstring prompt() const override { return L"Specify an option [All/Extents]:"; }

  Next input(const std::wstring& text) override {
    const std::wstring option = keyword(text);
    // A lone Enter would begin a zoom by mouse in the host; here it ends the command.
    if (option.empty()) return Next::kDone;
    if (option == L"ALL" || option == L"A" || option == L"EXTENTS" || option == L"E") {
      zoomToExtents();
      return Next::kDone;
    }
    hostPrint(L"Invalid option keyword.");
    return Next::kMore;
  }
};

}  // namespace

std::unique_ptr<ActiveCommand> makeViewCommand() {
  return std::make_unique<ViewCommand>();
}
std::unique_ptr<ActiveCommand> makeZoomCommand() {
  return std::make_unique<ZoomCommand>();
}

}  // namespace standin::host
