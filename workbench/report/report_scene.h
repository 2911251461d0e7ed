/// The data of a run as the report page reads it: shapes once, moments as cameras. What recurs from moment to
/// moment (selections, changed shapes, the desktop) is written once and then named by its index, so that the
/// page stays small. docs/outputs.md describes the keys.
#ifndef WORKBENCH_REPORT_SCENE_H
#define WORKBENCH_REPORT_SCENE_H

#include "workbench/report/report_data.h"

#include <nlohmann/json_fwd.hpp>

namespace workbench {

nlohmann::ordered_json reportJson(const ReportData& data);

}  // namespace workbench

#endif
