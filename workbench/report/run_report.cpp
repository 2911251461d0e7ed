#include "workbench/report/run_report.h"

#include "workbench/report/key_effects.h"
#include "workbench/report/menu_functions.h"
#include "workbench/running/outputs.h"

#include <utility>

namespace workbench {
namespace {

bool isSame(const standin::host::Camera& a, const standin::host::Camera& b) {
  const auto isSameTriple = [](const auto& p, const auto& q) {
    // Exact: only rows that are repeated bit by bit may be dropped.
    return p.x == q.x && p.y == q.y && p.z == q.z;
  };
  return isSameTriple(a.position, b.position) && isSameTriple(a.target, b.target) &&
         isSameTriple(a.up, b.up) && a.fieldWidth == b.fieldWidth && a.fieldHeight == b.fieldHeight &&
         a.isPerspective == b.isPerspective;
}

/// A row that repeats the view of the one before it adds nothing to the picture.
std::vector<ReportPass> passesOf(const std::vector<TrajectoryRow>& rows) {
  std::vector<ReportPass> passes;
  for (const TrajectoryRow& row : rows) {
    const bool isKnown = !passes.empty() && passes.back().viewport == row.viewport &&
                         passes.back().isPaper == row.isPaper && passes.back().isLayout == row.isLayout &&
                         isSame(passes.back().camera, row.camera);
    if (isKnown) continue;
    const bool isDrawn = row.kind == RowKind::kPass3d || row.kind == RowKind::kPass2d;
    passes.push_back({row.timeMs, row.viewport, row.isPaper, row.isLayout, row.camera, isDrawn});
  }
  return passes;
}

std::vector<ReportCap> capsOf(const Session& session) {
  std::vector<ReportCap> caps;
  for (const TimedDeviceAction& event : session.device)
    if (const auto* const motionP = std::get_if<DeviceEvent>(&event.action);
        // From the session and not from the trajectory, which has no rows for deflections that move nothing.
        motionP != nullptr && motionP->code < 0)
      caps.push_back({event.timeMs, motionP->axes});
  return caps;
}

std::vector<ReportMode> modesOf(const Session& session) {
  std::vector<ReportMode> modes;
  for (const TimedDeviceAction& event : session.device)
    if (const auto* const settingsP = std::get_if<AdvancedSettings>(&event.action); settingsP != nullptr)
      modes.push_back({event.timeMs, settingsP->rotationMode, settingsP->isZoomAfterView});
  return modes;
}

std::vector<ReportProblem> problemsOf(const RunResult& result) {
  std::vector<ReportProblem> problems;
  for (const std::string& text : result.problems) {
    ReportProblem problem{std::nullopt, text};
    for (const Breach& breach : result.recording.breaches)
      // The text comes from the breach, so it leads back to the time. Other problems have none.
      if (text.rfind("host: " + breach.text + " (", 0) == 0) problem.timeMs = breach.firstMs;
    problems.push_back(std::move(problem));
  }
  return problems;
}

}  // namespace

ReportData gatherReport(RunResult& result, const RunNames& names, const Session& session, RunTexts texts) {
  ReportData data;
  data.drawingName = names.drawing;
  data.sessionName = names.session;
  data.isClean = result.isClean();
  data.summary = summaryRows(result);
  data.shapes = std::move(result.shapes);
  data.moments = std::move(result.moments);
  data.passes = passesOf(result.recording.rows);
  data.caps = capsOf(session);
  data.modes = modesOf(session);
  data.toggles = std::move(result.toggles);
  for (const SelectionChange& change : result.recording.selections)
    data.selections.push_back({change.timeMs, change.handles});
  for (const SessionEvent& event : session.events)
    data.events.push_back({event.timeMs, event.line, event.text});
  data.problems = problemsOf(result);
  for (const CommandLineEntry& line : result.recording.commandLine)
    data.commandLine.push_back({line.timeMs, kindName(line.kind), line.text});
  data.functions = menuFunctions(texts.menu);
  data.keys = keyEffects(session, result.recording, data.functions);
  data.log = std::move(texts.log);
  data.isLogOnClock = result.isReplay;
  data.logNote = std::move(texts.logNote);
  return data;
}

}  // namespace workbench
