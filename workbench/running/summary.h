/// The summary of a run: as summary.json for programs, as rows for people. docs/outputs.md describes the
/// keys.
#ifndef WORKBENCH_SUMMARY_H
#define WORKBENCH_SUMMARY_H

#include "workbench/running/replay.h"

#include <string>
#include <utility>
#include <vector>

namespace workbench {

/// Names of files for the summary.
struct RunNames {
  std::string drawing;
  std::string session;
};

/// The summary as JSON, with a line end.
std::string summaryJson(const RunResult& result, const RunNames& names);

/// The values for people, as rows of label and value.
std::vector<std::pair<std::string, std::string>> summaryRows(const RunResult& result);

}  // namespace workbench

#endif
