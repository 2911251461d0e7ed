#include "workbench/report/report_scene.h"

#include "workbench/report/columns.h"
#include "workbench/report/page_text.h"
#include "workbench/report/report_log.h"
#include "workbench/report/report_shapes.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

/// A camera may be zoomed far into a drawing that is far from the origin.
constexpr int kCameraDigits = 15;

// What a part may take of the page, in characters: together what a browser opens in a few seconds.
constexpr std::size_t kMostOfShapes = 20U << 20;
constexpr std::size_t kMostOfChanges = 4U << 20;
constexpr std::size_t kMostOfSelections = 2U << 20;
constexpr std::size_t kMostOfDesktops = 2U << 20;
constexpr std::size_t kMostOfLog = 12U << 20;
constexpr std::size_t kMostOfTexts = 3U << 20;
constexpr std::size_t kMostPasses = 200000;
constexpr std::size_t kMostDeflections = 100000;

/// Values written once each, in the order in which they were first asked for. A selection that lasts for many
/// moments would otherwise be repeated in each of them.
class Table {
 public:
  explicit Table(std::size_t most) : mRoom(most) {}

  /// None when the value is new and the page has no room for it.
  std::optional<std::size_t> indexOf(Json entry) {
    // Equal text means equal values, since keys and numbers are always written in one way.
    std::string text = entry.dump();
    const auto known = mIndices.find(text);
    if (known != mIndices.end()) return known->second;
    if (text.size() > mRoom) {
      ++mLeftOut;
      return std::nullopt;
    }
    mRoom -= text.size();
    mIndices.emplace(std::move(text), mEntries.size());
    mEntries.push_back(std::move(entry));
    return mEntries.size() - 1;
  }
  std::size_t leftOut() const { return mLeftOut; }
  Json take() { return std::move(mEntries); }

 private:
  std::size_t mRoom;
  std::size_t mLeftOut = 0;
  std::map<std::string, std::size_t> mIndices;
  Json mEntries = Json::array();
};

/// Shapes that moments name, each written once.
class ChangedShapes {
 public:
  std::optional<std::size_t> indexOf(const ReportShape& shape) {
    // The columns of one shape are its text.
    const auto index = mKeys.indexOf(shapesJson({&shape}));
    if (index && *index == mShapes.size()) mShapes.push_back(&shape);
    return index;
  }
  std::size_t leftOut() const { return mKeys.leftOut(); }
  Json json() const { return shapesJson(mShapes); }

 private:
  Table mKeys{kMostOfChanges};
  std::vector<const ReportShape*> mShapes;
};

struct Tables {
  Table selections{kMostOfSelections};
  ChangedShapes changes;
  Table desktops{kMostOfDesktops};
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

Json orNull(std::optional<std::size_t> index) {
  return index ? Json(*index) : Json();
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
  json["selection"] = orNull(tables.selections.indexOf(handlesJson(moment.selection)));
  if (!moment.changed.empty()) {
    Json changed = Json::array();
    for (const ReportShape& shape : moment.changed)
      // Without room for where it is now, the page draws it where it was.
      if (const auto index = tables.changes.indexOf(shape)) changed.push_back(*index);
    json["changed"] = std::move(changed);
  }
  if (!moment.gone.empty()) json["gone"] = handlesJson(moment.gone);
  if (moment.desktop) json["desktop"] = orNull(tables.desktops.indexOf(desktopJson(*moment.desktop)));
  return json;
}

/// Every `step`th of a list and its last entry, so that no more than about `most` are left.
template <typename Entry>
std::vector<const Entry*> thinned(const std::vector<Entry>& list, std::size_t most) {
  const std::size_t step = list.size() / most + 1;
  std::vector<const Entry*> kept;
  for (std::size_t i = 0; i < list.size(); ++i)
    // The last one stays: it is what the run left.
    if (i % step == 0 || i + 1 == list.size()) kept.push_back(&list[i]);
  return kept;
}

int stateOf(const ReportPass& pass) {
  return (pass.camera.isPerspective ? 1 : 0) + (pass.isPaper ? 2 : 0) + (pass.isLayout ? 4 : 0) +
         (pass.isDrawn ? 8 : 0) + 16 * pass.viewport;
}

/// The views as columns. The camera's position and up vector are relative to the target and the unit: there
/// 32 bits are finer than any screen, also far from the origin.
Json passesJson(const std::vector<ReportPass>& passes) {
  std::vector<std::uint32_t> times;
  std::vector<std::int32_t> states;
  std::vector<double> targets;
  std::vector<float> eyes;
  std::vector<float> ups;
  std::vector<float> fields;
  for (const ReportPass* const passP : thinned(passes, kMostPasses)) {
    const standin::host::Camera& camera = passP->camera;
    times.push_back(static_cast<std::uint32_t>(passP->timeMs));
    states.push_back(stateOf(*passP));
    targets.insert(targets.end(), {camera.target.x, camera.target.y, camera.target.z});
    const AcGeVector3d eye = camera.position - camera.target;
    for (const double value : {eye.x, eye.y, eye.z}) eyes.push_back(static_cast<float>(value));
    for (const double value : {camera.up.x, camera.up.y, camera.up.z})
      ups.push_back(static_cast<float>(value));
    for (const double value : {camera.fieldWidth, camera.fieldHeight})
      fields.push_back(static_cast<float>(value));
  }
  return {{"count", times.size()},   {"all", passes.size()},      {"time", column(times)},
          {"state", column(states)}, {"target", column(targets)}, {"eye", column(eyes)},
          {"up", column(ups)},       {"field", column(fields)}};
}

Json capsJson(const std::vector<ReportCap>& caps) {
  std::vector<std::uint32_t> times;
  std::vector<std::int16_t> axes;
  for (const ReportCap* const capP : thinned(caps, kMostDeflections)) {
    times.push_back(static_cast<std::uint32_t>(capP->timeMs));
    axes.insert(axes.end(), capP->axes.begin(), capP->axes.end());
  }
  return {{"count", times.size()}, {"all", caps.size()}, {"time", column(times)}, {"axes", column(axes)}};
}

Json problemJson(const ReportProblem& problem) {
  return Json::array({problem.timeMs ? Json(*problem.timeMs) : Json(), problem.text});
}

void noteMissing(Json& notes, std::size_t missing, std::size_t all, const std::string& what) {
  if (missing != 0)
    notes.push_back(std::to_string(missing) + " of " + std::to_string(all) + " " + what +
                    " are left out: the page would be too large.");
}

void noteThinned(Json& notes, const Json& columns, const std::string& what) {
  const auto all = columns["all"].get<std::size_t>();
  noteMissing(notes, all - columns["count"].get<std::size_t>(), all, what);
}

void noteLeftOut(Json& notes, const Tables& tables) {
  const auto note = [&notes](std::size_t count, const char* what) {
    if (count != 0)
      notes.push_back(std::to_string(count) + what + " are left out: the page would be too large.");
  };
  note(tables.selections.leftOut(), " changes of the selection");
  note(tables.changes.leftOut(), " moves of objects");
  note(tables.desktops.leftOut(), " changes of the desktop");
}

/// The entries of a list as far as the page has room for their texts; a note says how many are missing.
template <typename List, typename ToJson>
Json textsJson(const List& list, const char* what, Json& notes, ToJson toJson) {
  Json result = Json::array();
  std::size_t size = 0;
  for (const auto& element : list) {
    Json entry = toJson(element);
    size += entry.dump(-1, ' ', false, Json::error_handler_t::replace).size();
    if (size > kMostOfTexts) break;
    result.push_back(std::move(entry));
  }
  noteMissing(notes, list.size() - result.size(), list.size(), what);
  return result;
}

}  // namespace

Json reportJson(const ReportData& data) {
  Tables tables;
  Json notes = Json::array();
  Json json{{"drawing", data.drawingName}, {"session", data.sessionName}, {"clean", data.isClean}};
  json["summary"] = array(data.summary, [](const auto& row) { return Json::array({row.first, row.second}); });
  const auto shapes = shapesForPage(data.shapes, kMostOfShapes);
  noteMissing(notes, data.shapes.size() - shapes.size(), data.shapes.size(), "entities, the smallest ones,");
  json["shapes"] = shapesJson(shapes);
  json["moments"] =
      array(data.moments, [&tables](const ReportMoment& moment) { return momentJson(moment, tables); });
  json["selected"] = array(data.selections, [&tables](const ReportSelection& change) {
    return Json::array({change.timeMs, orNull(tables.selections.indexOf(handlesJson(change.handles)))});
  });
  noteLeftOut(notes, tables);
  // The tables are written after the moments and changes that fill them.
  json["selections"] = tables.selections.take();
  json["changes"] = tables.changes.json();
  json["desktops"] = tables.desktops.take();
  json["passes"] = passesJson(data.passes);
  json["caps"] = capsJson(data.caps);
  json["modes"] = array(data.modes, [](const ReportMode& mode) {
    return Json::array({mode.timeMs, mode.code, mode.isZoomAfterView});
  });
  json["toggles"] = array(data.toggles, [](const ReportToggles& toggles) {
    return Json::array({toggles.timeMs, toggles.isSelectionCentre, toggles.isLineAxis});
  });
  json["events"] = textsJson(data.events, "events of the session", notes, [](const ReportEvent& event) {
    return Json::array({event.timeMs, event.line, event.text});
  });
  json["problems"] = textsJson(data.problems, "problems", notes, problemJson);
  json["lines"] = textsJson(data.commandLine, "lines of the command line", notes, [](const ReportLine& line) {
    return Json::array({line.timeMs, line.kind, line.text});
  });
  json["functions"] = textsJson(data.functions, "functions", notes, [](const ReportFunction& function) {
    return Json::array({function.label, function.macro});
  });
  json["keys"] = textsJson(data.keys, "keys", notes, [](const ReportKey& key) {
    return Json::array({key.timeMs, key.name, key.sent, key.view});
  });
  json["log"] = logJson(data.log, kMostOfLog);
  json["log_note"] = data.logNote;
  json["log_follows"] = data.isLogOnClock;
  noteThinned(notes, json["passes"], "views");
  noteThinned(notes, json["caps"], "deflections of the cap");
  json["notes"] = std::move(notes);
  return json;
}

}  // namespace workbench
