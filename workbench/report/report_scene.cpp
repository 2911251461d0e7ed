#include "workbench/report/report_scene.h"

#include "workbench/report/page_text.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
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

// 13 numbers of 11 characters each: about 35 MB of the page at most.
constexpr std::size_t kMostPasses = 250000;

/// Values written once each, in the order in which they were first asked for. A selection that lasts for many
/// moments would otherwise be repeated in each of them.
class Table {
 public:
  std::size_t indexOf(Json entry) {
    // Equal text means equal values, since keys and numbers are always written in one way.
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
  // An ordered map: equal runs must give equal pages.
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
  // Left out in the model tab, where the page draws neither sheet nor window.
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

/// Bytes in base64: a number takes 11 characters so, exactly, and about 18 as a decimal.
std::string base64(const std::vector<double>& values) {
  static constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::vector<unsigned char> bytes(values.size() * sizeof(double));
  // In the byte order of this machine, which is little-endian as are the machines of browsers.
  if (!values.empty()) std::memcpy(bytes.data(), values.data(), bytes.size());
  std::string text;
  text.reserve((bytes.size() + 2) / 3 * 4);
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    std::uint32_t block = 0;
    // The first byte is the highest of the block, whatever the machine's byte order.
    for (std::size_t k = 0; k < 3; ++k) block = block << 8 | (k < count ? bytes[i + k] : 0U);
    for (std::size_t k = 0; k < 4; ++k) text += k <= count ? kDigits[block >> (18 - 6 * k) & 63U] : '=';
  }
  return text;
}

/// For each pass 13 numbers: time, state, position, target, up, width, height. The state is the
/// sum of 1 for perspective, 2 for a sheet that is current, 4 for a layout and 8 times the viewport's number.
Json passesJson(const std::vector<ReportPass>& passes) {
  // More would make the page larger than a browser opens at once; a screen has fewer pixels.
  const std::size_t step = passes.size() / kMostPasses + 1;
  std::vector<double> values;
  std::size_t count = 0;
  for (std::size_t i = 0; i < passes.size(); ++i) {
    // The last one stays: it is what the run left.
    if (i % step != 0 && i + 1 != passes.size()) continue;
    const ReportPass& pass = passes[i];
    const standin::host::Camera& camera = pass.camera;
    const int state =
        (camera.isPerspective ? 1 : 0) + (pass.isPaper ? 2 : 0) + (pass.isLayout ? 4 : 0) + 8 * pass.viewport;
    values.insert(values.end(), {static_cast<double>(pass.timeMs), static_cast<double>(state)});
    for (const auto* const triple : {&camera.position, &camera.target})
      values.insert(values.end(), {triple->x, triple->y, triple->z});
    values.insert(values.end(),
                  {camera.up.x, camera.up.y, camera.up.z, camera.fieldWidth, camera.fieldHeight});
    ++count;
  }
  return {{"count", count}, {"all", passes.size()}, {"data", base64(values)}};
}

/// t x y z rx ry rz t x y z ...
Json capsJson(const std::vector<ReportCap>& caps) {
  Json json = Json::array();
  for (const ReportCap& cap : caps) {
    json.push_back(cap.timeMs);
    for (const std::int16_t value : cap.axes) json.push_back(value);
  }
  return json;
}

Json problemJson(const ReportProblem& problem) {
  return Json::array({problem.timeMs ? Json(*problem.timeMs) : Json(), problem.text});
}

}  // namespace

Json reportJson(const ReportData& data) {
  Tables tables;
  Json json{{"drawing", data.drawingName}, {"session", data.sessionName}, {"clean", data.isClean}};
  json["summary"] = array(data.summary, [](const auto& row) { return Json::array({row.first, row.second}); });
  json["groups"] = groupsJson(data.shapes);
  json["moments"] =
      array(data.moments, [&tables](const ReportMoment& moment) { return momentJson(moment, tables); });
  json["selected"] = array(data.selections, [&tables](const ReportSelection& change) {
    return Json::array({change.timeMs, tables.selections.indexOf(handlesJson(change.handles))});
  });
  // The tables are written after the moments and changes that fill them.
  json["selections"] = tables.selections.take();
  json["changes"] = tables.changes.take();
  json["desktops"] = tables.desktops.take();
  json["passes"] = passesJson(data.passes);
  json["caps"] = capsJson(data.caps);
  json["events"] = array(data.events, [](const ReportEvent& event) {
    return Json::array({event.timeMs, event.line, event.text});
  });
  json["problems"] = array(data.problems, problemJson);
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
  json["log_follows"] = data.isLogOnClock;
  return json;
}

}  // namespace workbench
