#include "workbench/live/live_view.h"

#include "standin/controller/controller_feed.h"
#include "standin/objectarx/host_control.h"
#include "workbench/platform/desktop.h"
#include "workbench/running/recording.h"
#include "workbench/text_input.h"

#include <filesystem>

namespace workbench {
namespace {

namespace host = standin::host;
using Json = nlohmann::json;

// Numbers as the host gives them: 1 is the sheet of a layout, windows in it count from 2.
constexpr int kSheetViewport = 1;
constexpr int kFirstWindow = 2;

Json cameraJson(const host::Camera& camera) {
  const AcGePoint3d& p = camera.position;
  const AcGePoint3d& t = camera.target;
  const AcGeVector3d& u = camera.up;
  return {p.x,
          p.y,
          p.z,
          t.x,
          t.y,
          t.z,
          u.x,
          u.y,
          u.z,
          camera.fieldWidth,
          camera.fieldHeight,
          camera.isPerspective ? 1 : 0};
}

Json paperJson(const host::PaperView& paper) {
  return {paper.centerX, paper.centerY, paper.width, paper.height};
}

Json barJson(const std::optional<ReportScrollBar>& bar) {
  if (!bar) return nullptr;
  return {bar->minimum, bar->maximum, bar->page, bar->position};
}

/// Class name, upright bar and level bar of every window that scrolls.
Json barsJson() {
  Json bars = Json::array();
  for (const ReportWindow& window : desktopState().windows)
    if (window.vertical || window.horizontal)
      bars.push_back({window.className, barJson(window.vertical), barJson(window.horizontal)});
  return bars;
}

bool isLayoutShown() {
  return host::variable(L"TILEMODE") == L"0";
}

}  // namespace

Json pictureJson() {
  Json json{{"t", "picture"}, {"cap", standin::controller::lastHandedOver()}, {"bars", barsJson()}};
  const int viewport = host::currentViewport();
  json["viewport"] = viewport;
  if (host::drawing() == nullptr) return json;
  const host::Layout layout = host::layout();
  if (!isLayoutShown()) {
    if (const auto camera = host::camera(viewport)) json["camera"] = cameraJson(*camera);
    return json;
  }
  json["paper"] = paperJson(host::paperView());
  json["sheet"] = paperJson(layout.sheet);
  Json windows = Json::array();
  for (std::size_t i = 0; i < layout.windows.size(); ++i)
    if (const auto camera = host::camera(kFirstWindow + static_cast<int>(i)))
      windows.push_back({{"place", paperJson(layout.windows[i])}, {"camera", cameraJson(*camera)}});
  json["windows"] = std::move(windows);
  json["onSheet"] = viewport == kSheetViewport;
  return json;
}

Json hostJson() {
  Json json{{"layout", isLayoutShown()}, {"viewport", host::currentViewport()}};
  Json documents = Json::array();
  // A drawing of the user's is open under the path of its file, whose end says enough.
  for (const std::wstring& name : host::documentNames()) {
    const std::string text = toUtf8(std::wstring_view(name));
    documents.push_back({text, std::filesystem::u8path(text).filename().u8string()});
  }
  json["documents"] = std::move(documents);
  json["viewports"] = host::drawing() == nullptr ? 0 : host::layout().windows.size();
  const auto camera = host::camera(host::currentViewport());
  json["perspective"] = camera && camera->isPerspective;
  Json selection = Json::array();
  for (const std::uint64_t handle : host::selection()) selection.push_back(handleText(handle));
  json["selection"] = std::move(selection);
  return json;
}

}  // namespace workbench
