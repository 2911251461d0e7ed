/// Gathers what the report page shows of a run.
#ifndef WORKBENCH_RUN_REPORT_H
#define WORKBENCH_RUN_REPORT_H

#include "workbench/report/report.h"
#include "workbench/running/replay.h"
#include "workbench/running/summary.h"

#include <string>

namespace workbench {

/// Files of the user's profile after the run, UTF-8.
struct RunTexts {
  std::string log;      ///< this run's entries
  std::string logNote;  ///< why there is none, or what is missing
  std::string menu;
};

/// The report's data; shapes and moments are moved out of `result`.
ReportData gatherReport(RunResult& result, const RunNames& names, const Session& session, RunTexts texts);

}  // namespace workbench

#endif
