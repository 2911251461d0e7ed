/// The files of a run that other programs read: trajectory.csv, entities.csv, commandline.log, summary.json.
#ifndef WORKBENCH_OUTPUTS_H
#define WORKBENCH_OUTPUTS_H

#include "workbench/running/replay.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

/// Header line and one line a row; numbers with 17 significant digits.
std::string trajectoryCsv(const std::vector<TrajectoryRow>& rows);

/// "handle,type,layer,points": points as "x y z" separated by ";". A layer name with a comma, a quote or a
/// line end stands in quotes, its quotes doubled.
std::string entitiesCsv(const std::vector<EntityState>& entities);

/// `TIME_MS KIND "TEXT"` a line, the text escaped as in JSON.
std::string commandLineLog(const std::vector<CommandLineEntry>& lines);

/// Names of files for the summary.
struct RunNames {
  std::string drawing;
  std::string session;
};

/// The summary as JSON, with a line end.
std::string summaryJson(const RunResult& result, const RunNames& names);

/// The same counts as rows of "what, how much", for people.
std::vector<std::pair<std::string, std::string>> summaryRows(const RunResult& result);

const char* kindName(LineKind kind);

/// Writes the text. Throws InputError with the path when it cannot.
void writeFile(const std::filesystem::path& file, const std::string& text);

}  // namespace workbench

#endif
