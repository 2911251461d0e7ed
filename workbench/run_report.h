/// Gathers what the report page shows of a run.
#ifndef WORKBENCH_RUN_REPORT_H
#define WORKBENCH_RUN_REPORT_H

#include <string>

#include "workbench/outputs.h"
#include "workbench/replay.h"
#include "workbench/report.h"

namespace workbench {

/// The report's data; shapes and moments are moved out of `result`. `log` is the module's log, UTF-8.
ReportData gatherReport(RunResult& result, const RunNames& names, std::string log);

}  // namespace workbench

#endif
