#include "workbench/report/report_scene.h"

#include "workbench/report/report_json.h"

#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace workbench {
namespace {

/// Ten digits place a drawing of a kilometre to a ten-thousandth of a millimetre.
constexpr int kShapeDigits = 10;
/// A camera may be zoomed far into a drawing that lies far from the origin.
constexpr int kCameraDigits = 15;

/// Texts written once each, in the order in which they were first asked for.
class Table {
 public:
  std::size_t indexOf(const std::string& entry) {
    const auto [place, isNew] = mIndices.emplace(entry, mEntries.size());
    if (isNew) mEntries.push_back(entry);
    return place->second;
  }
  const std::vector<std::string>& entries() const { return mEntries; }

 private:
  std::map<std::string, std::size_t> mIndices;
  std::vector<std::string> mEntries;
};

void appendHandle(std::string& json, std::uint64_t handle) {
  constexpr const char* kDigits = "0123456789ABCDEF";
  std::string digits;
  for (std::uint64_t rest = handle; rest != 0 || digits.empty(); rest /= 16)
    digits.insert(0, 1, kDigits[rest % 16]);
  appendText(json, digits);
}

template <typename List, typename Append>
void appendArray(std::string& json, const List& list, Append append) {
  json += '[';
  Separator separator;
  for (const auto& element : list) {
    separator.before(json);
    append(element);
  }
  json += ']';
}

void appendHandles(std::string& json, const std::vector<std::uint64_t>& handles) {
  appendArray(json, handles, [&json](std::uint64_t handle) { appendHandle(json, handle); });
}

void appendCoordinates(std::string& json, std::initializer_list<double> values, int digits,
                       Separator& separator) {
  for (const double value : values) {
    separator.before(json);
    appendNumber(json, value, digits);
  }
}

void appendPolyline(std::string& json, const standin::Polyline3& line) {
  Separator separator;
  json += '[';
  for (const AcGePoint3d& p : line) appendCoordinates(json, {p.x, p.y, p.z}, kShapeDigits, separator);
  json += ']';
}

void appendShape(std::string& json, const ReportShape& shape) {
  json += '[';
  appendHandle(json, shape.handle);
  for (const standin::Polyline3& line : shape.outline) {
    json += ',';
    appendPolyline(json, line);
  }
  json += ']';
}

void appendLook(std::string& json, const std::string& layer, int colour) {
  json += "\"layer\":";
  appendText(json, layer);
  json += ",\"colour\":";
  appendInteger(json, colour);
}

void appendGroups(std::string& json, const std::vector<ReportShape>& shapes) {
  std::map<std::pair<std::string, int>, std::vector<const ReportShape*>> groups;
  for (const ReportShape& shape : shapes) groups[{shape.layer, shape.colour}].push_back(&shape);
  appendArray(json, groups, [&json](const auto& group) {
    json += '{';
    appendLook(json, group.first.first, group.first.second);
    json += ",\"shapes\":";
    appendArray(json, group.second, [&json](const ReportShape* shapeP) { appendShape(json, *shapeP); });
    json += '}';
  });
}

std::string changeEntry(const ReportShape& shape) {
  std::string entry = "{";
  appendLook(entry, shape.layer, shape.colour);
  entry += ",\"shape\":";
  appendShape(entry, shape);
  return entry + '}';
}

void appendCamera(std::string& json, const standin::host::Camera& camera) {
  const AcGePoint3d& p = camera.position;
  const AcGePoint3d& t = camera.target;
  const AcGeVector3d& u = camera.up;
  Separator separator;
  json += '[';
  appendCoordinates(json,
                    {p.x, p.y, p.z, t.x, t.y, t.z, u.x, u.y, u.z, camera.fieldWidth, camera.fieldHeight},
                    kCameraDigits, separator);
  json += camera.isPerspective ? ",1]" : ",0]";
}

void appendPaper(std::string& json, const standin::host::PaperView& paper) {
  Separator separator;
  json += '[';
  appendCoordinates(json, {paper.centerX, paper.centerY, paper.width, paper.height}, kCameraDigits,
                    separator);
  json += ']';
}

/// The camera goes by another name where it is not the current view's.
void appendViews(std::string& json, const ReportMoment& moment) {
  if (moment.isLayout) {
    json += "\"paper\":";
    appendPaper(json, moment.paper);
    json += ',';
  }
  json += moment.isPaper ? "\"window\":" : "\"camera\":";
  appendCamera(json, moment.camera);
}

void appendIntegers(std::string& json, std::initializer_list<int> values) {
  appendArray(json, values, [&json](int value) { appendInteger(json, value); });
}

void appendBar(std::string& json, const char* name, const std::optional<ReportScrollBar>& bar) {
  if (!bar) return;
  json += std::string(",\"") + name + "\":";
  appendIntegers(json, {bar->minimum, bar->maximum, bar->page, bar->position});
}

std::string desktopEntry(const ReportDesktop& desktop) {
  std::string entry = "{\"pointer\":";
  appendIntegers(entry, {desktop.pointer[0], desktop.pointer[1]});
  entry += ",\"windows\":";
  appendArray(entry, desktop.windows, [&entry](const ReportWindow& window) {
    entry += "{\"class\":";
    appendText(entry, window.className);
    entry += ",\"rect\":";
    appendIntegers(entry, {window.rect[0], window.rect[1], window.rect[2], window.rect[3]});
    appendBar(entry, "vertical", window.vertical);
    appendBar(entry, "horizontal", window.horizontal);
    entry += '}';
  });
  return entry + '}';
}

struct Tables {
  Table selections;
  Table changes;
  Table desktops;
};

void appendMoment(std::string& json, const ReportMoment& moment, Tables& tables) {
  json += "{\"time\":";
  appendInteger(json, moment.timeMs);
  json += ",\"cap\":";
  appendArray(json, moment.cap, [&json](int value) { appendInteger(json, value); });
  json += ",\"viewport\":";
  appendInteger(json, moment.viewport);
  json += ',';
  appendViews(json, moment);
  std::string selection;
  appendHandles(selection, moment.selection);
  json += ",\"selection\":" + std::to_string(tables.selections.indexOf(selection));
  if (!moment.changed.empty()) {
    json += ",\"changed\":";
    appendArray(json, moment.changed, [&json, &tables](const ReportShape& shape) {
      json += std::to_string(tables.changes.indexOf(changeEntry(shape)));
    });
  }
  if (!moment.gone.empty()) {
    json += ",\"gone\":";
    appendHandles(json, moment.gone);
  }
  if (moment.desktop)
    json += ",\"desktop\":" + std::to_string(tables.desktops.indexOf(desktopEntry(*moment.desktop)));
  json += '}';
}

void appendMoments(std::string& json, const std::vector<ReportMoment>& moments) {
  Tables tables;
  const auto appendEntry = [&json](const std::string& entry) { json += entry; };
  json += ",\n\"moments\":";
  appendArray(json, moments, [&](const ReportMoment& moment) { appendMoment(json, moment, tables); });
  json += ",\n\"selections\":";
  appendArray(json, tables.selections.entries(), appendEntry);
  json += ",\n\"changes\":";
  appendArray(json, tables.changes.entries(), appendEntry);
  json += ",\n\"desktops\":";
  appendArray(json, tables.desktops.entries(), appendEntry);
}

void appendPath(std::string& json, const std::vector<std::pair<std::int64_t, AcGePoint3d>>& path) {
  Separator separator;
  json += ",\n\"path\":[";
  for (const auto& [timeMs, at] : path) {
    separator.before(json);
    appendInteger(json, timeMs);
    appendCoordinates(json, {at.x, at.y, at.z}, kShapeDigits, separator);
  }
  json += ']';
}

void appendNames(std::string& json, const ReportData& data) {
  json += "{\"drawing\":";
  appendText(json, data.drawingName);
  json += ",\"session\":";
  appendText(json, data.sessionName);
  json += data.isClean ? ",\"clean\":true" : ",\"clean\":false";
  json += ",\n\"summary\":";
  appendArray(json, data.summary, [&json](const auto& row) {
    json += '[';
    appendText(json, row.first);
    json += ',';
    appendText(json, row.second);
    json += ']';
  });
}

void appendLine(std::string& json, const ReportLine& line) {
  json += '[';
  appendInteger(json, line.timeMs);
  json += ',';
  appendText(json, line.kind);
  json += ',';
  appendText(json, line.text);
  json += ']';
}

void appendFunctions(std::string& json, const std::vector<ReportFunction>& functions) {
  json += ",\n\"functions\":";
  appendArray(json, functions, [&json](const ReportFunction& function) {
    json += '[';
    appendText(json, function.label);
    json += ',';
    appendText(json, function.macro);
    json += ']';
  });
}

void appendKeys(std::string& json, const std::vector<ReportKey>& keys) {
  json += ",\n\"keys\":";
  appendArray(json, keys, [&json](const ReportKey& key) {
    json += '[';
    appendInteger(json, key.timeMs);
    json += ',';
    appendText(json, key.name);
    json += ',';
    appendArray(json, key.sent, [&json](const std::string& text) { appendText(json, text); });
    json += ',';
    appendText(json, key.view);
    json += ']';
  });
}

void appendLayout(std::string& json, const standin::host::Layout& layout) {
  json += ",\n\"layout\":{\"sheet\":";
  appendPaper(json, layout.sheet);
  json += ",\"window\":";
  appendPaper(json, layout.window);
  json += '}';
}

}  // namespace

std::string reportJson(const ReportData& data) {
  std::string json;
  appendNames(json, data);
  json += ",\n\"groups\":";
  appendGroups(json, data.shapes);
  appendMoments(json, data.moments);
  appendPath(json, data.cameraPath);
  json += ",\n\"lines\":";
  appendArray(json, data.commandLine, [&json](const ReportLine& line) { appendLine(json, line); });
  appendFunctions(json, data.functions);
  appendKeys(json, data.keys);
  appendLayout(json, data.layout);
  json += ",\n\"log\":";
  appendText(json, data.log);
  return json + '}';
}

}  // namespace workbench
