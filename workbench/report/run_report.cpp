#include "workbench/report/run_report.h"

#include "workbench/report/key_effects.h"
#include "workbench/report/menu_functions.h"
#include "workbench/running/outputs.h"

#include <utility>

namespace workbench {
namespace {

std::vector<std::pair<std::int64_t, AcGePoint3d>> cameraPath(const std::vector<TrajectoryRow>& rows) {
  std::vector<std::pair<std::int64_t, AcGePoint3d>> path;
  for (const TrajectoryRow& row : rows) {
    if (row.isPaper) continue;
    const AcGePoint3d& at = row.camera.position;
    if (!path.empty()) {
      const AcGePoint3d& before = path.back().second;
      if (before.x == at.x && before.y == at.y && before.z == at.z) continue;
    }
    path.emplace_back(row.timeMs, at);
  }
  return path;
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
  data.cameraPath = cameraPath(result.recording.rows);
  for (const CommandLineEntry& line : result.recording.commandLine)
    data.commandLine.push_back({line.timeMs, kindName(line.kind), line.text});
  data.functions = menuFunctions(texts.menu);
  data.keys = keyEffects(session, result.recording, data.functions);
  data.log = std::move(texts.log);
  data.logNote = std::move(texts.logNote);
  return data;
}

}  // namespace workbench
