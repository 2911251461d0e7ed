/// The data of a run as the report page reads it: shapes once, moments as cameras. What recurs from moment to
/// moment (selections, changed shapes) is written once and then named by its index, so that the page stays
/// small.
#ifndef WORKBENCH_REPORT_SCENE_H
#define WORKBENCH_REPORT_SCENE_H

#include "workbench/report/report_data.h"

#include <string>

namespace workbench {

/// One JSON object: `drawing`, `session`, `clean`, `summary`, `groups` (shapes by layer and colour, in the
/// order of their names and numbers), `moments`, `selections`, `changes`, `desktops`, `path` (t x y z t x y z
/// ...), `lines`, `functions`, `keys`, `layout`, `log`.
std::string reportJson(const ReportData& data);

}  // namespace workbench

#endif
