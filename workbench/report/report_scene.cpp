#include "workbench/report/report_scene.h"

#include "workbench/report/page_text.h"

#include <nlohmann/json.hpp>

#include <cstdint>
#include <cstdio>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

/// Ten digits place a drawing of a kilometre to a ten-thousandth of a millimetre.
constexpr int kShapeDigits = 10;
/// A camera may be zoomed far into a drawing that is far from the origin.
constexpr int kCameraDigits = 15;

/// Values written once each, in the order in which they were first asked for.
class Table {
 public:
  std::size_t indexOf(Json entry) {
    const auto [place, isNew] = mIndices.emplace(entry.dump(), mEntries.size());
    if (isNew) mEntries.push_back(std::move(entry));
    return place->second;
  }
  Json take() { return std::move(mEntries); }

 private:
  std::map<std::string, std::size_t> mIndices;
  Json mEntries = Json::array();
};

struct Tables {
  Table selections;
  Table changes;
  Table desktops;
};

template <typename List, typename ToJson>
Json array(const List& list, ToJson toJson) {
  Json result = Json::array();
  for (const auto& element : list) result.push_back(toJson(element));
  return result;
}

Json numbers(std::initializer_list<double> values, int digits) {
  return array(values, [digits](double value) { return rounded(value, digits); });
}

Json handleJson(std::uint64_t handle) {
  char text[20];
  std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(handle));
  return text;
}

Json handlesJson(const std::vector<std::uint64_t>& handles) {
  return array(handles, handleJson);
}

Json lineJson(const standin::Polyline3& line) {
  Json coordinates = Json::array();
  for (const AcGePoint3d& p : line)
    for (const double value : {p.x, p.y, p.z}) coordinates.push_back(rounded(value, kShapeDigits));
  return coordinates;
}

/// Handle, then the lines.
Json shapeJson(const ReportShape& shape) {
  Json json = Json::array({handleJson(shape.handle)});
  for (const standin::Polyline3& line : shape.outline) json.push_back(lineJson(line));
  return json;
}

/// One path of the picture draws each group: shapes that look alike and are hidden together.
Json groupsJson(const std::vector<ReportShape>& shapes) {
  std::map<std::pair<std::string, int>, std::vector<const ReportShape*>> groups;
  for (const ReportShape& shape : shapes) groups[{shape.layer, shape.colour}].push_back(&shape);
  return array(groups, [](const auto& group) {
    return Json{
        {"layer", group.first.first},
        {"colour", group.first.second},
        {"shapes", array(group.second, [](const ReportShape* shapeP) { return shapeJson(*shapeP); })}};
  });
}

Json changeJson(const ReportShape& shape) {
  return {{"layer", shape.layer}, {"colour", shape.colour}, {"shape", shapeJson(shape)}};
}

Json cameraJson(const standin::host::Camera& camera) {
  const AcGePoint3d& p = camera.position;
  const AcGePoint3d& t = camera.target;
  const AcGeVector3d& u = camera.up;
  Json json = numbers({p.x, p.y, p.z, t.x, t.y, t.z, u.x, u.y, u.z, camera.fieldWidth, camera.fieldHeight},
                      kCameraDigits);
  json.push_back(camera.isPerspective ? 1 : 0);
  return json;
}

Json paperJson(const standin::host::PaperView& paper) {
  return numbers({paper.centerX, paper.centerY, paper.width, paper.height}, kCameraDigits);
}

Json barJson(const ReportScrollBar& bar) {
  return {bar.minimum, bar.maximum, bar.page, bar.position};
}

Json windowJson(const ReportWindow& window) {
  Json json{{"class", window.className}, {"rect", window.rect}};
  if (window.vertical) json["vertical"] = barJson(*window.vertical);
  if (window.horizontal) json["horizontal"] = barJson(*window.horizontal);
  return json;
}

Json desktopJson(const ReportDesktop& desktop) {
  return {{"pointer", desktop.pointer}, {"windows", array(desktop.windows, windowJson)}};
}

Json momentJson(const ReportMoment& moment, Tables& tables) {
  Json json{{"time", moment.timeMs}, {"cap", moment.cap}, {"viewport", moment.viewport}};
  if (moment.isLayout) {
    json["paper"] = paperJson(moment.paper);
    json["sheet"] = paperJson(moment.sheet);
    json["place"] = paperJson(moment.window);
  }
  // Where the sheet is current, the camera is that of the window in it, not of the current view.
  json[moment.isPaper ? "window" : "camera"] = cameraJson(moment.camera);
  json["selection"] = tables.selections.indexOf(handlesJson(moment.selection));
  if (!moment.changed.empty())
    json["changed"] = array(moment.changed, [&tables](const ReportShape& shape) {
      return tables.changes.indexOf(changeJson(shape));
    });
  if (!moment.gone.empty()) json["gone"] = handlesJson(moment.gone);
  if (moment.desktop) json["desktop"] = tables.desktops.indexOf(desktopJson(*moment.desktop));
  return json;
}

/// t x y z t x y z ...
Json pathJson(const std::vector<std::pair<std::int64_t, AcGePoint3d>>& path) {
  Json json = Json::array();
  for (const auto& [timeMs, at] : path) {
    json.push_back(timeMs);
    for (const double value : {at.x, at.y, at.z}) json.push_back(rounded(value, kShapeDigits));
  }
  return json;
}

}  // namespace

Json reportJson(const ReportData& data) {
  Tables tables;
  Json json{{"drawing", data.drawingName}, {"session", data.sessionName}, {"clean", data.isClean}};
  json["summary"] = array(data.summary, [](const auto& row) { return Json::array({row.first, row.second}); });
  json["groups"] = groupsJson(data.shapes);
  json["moments"] =
      array(data.moments, [&tables](const ReportMoment& moment) { return momentJson(moment, tables); });
  json["selections"] = tables.selections.take();
  json["changes"] = tables.changes.take();
  json["desktops"] = tables.desktops.take();
  json["path"] = pathJson(data.cameraPath);
  json["lines"] = array(data.commandLine, [](const ReportLine& line) {
    return Json::array({line.timeMs, line.kind, line.text});
  });
  json["functions"] = array(data.functions, [](const ReportFunction& function) {
    return Json::array({function.label, function.macro});
  });
  json["keys"] = array(data.keys, [](const ReportKey& key) {
    return Json::array({key.timeMs, key.name, key.sent, key.view});
  });
  json["log"] = data.log;
  json["log_note"] = data.logNote;
  return json;
}

}  // namespace workbench
