/// The tables of a run that other programs read: trajectory.csv, entities.csv, commandline.log.
/// docs/outputs.md describes their columns.
#ifndef WORKBENCH_OUTPUTS_H
#define WORKBENCH_OUTPUTS_H

#include "workbench/running/drawing_state.h"
#include "workbench/running/recording.h"

#include <string>
#include <string_view>
#include <vector>

namespace workbench {

/// A header line and a line for each row; numbers with 17 significant digits.
std::string trajectoryCsv(const std::vector<TrajectoryRow>& rows);

/// "handle,type,layer,points": points as "x y z" separated by ";". A layer name with a comma, a quote or a
/// line end is put in quotes, its quotes doubled.
std::string entitiesCsv(const std::vector<EntityState>& entities);

/// Lines of the form `TIME_MS KIND "TEXT"`, the text escaped as in JSON.
std::string commandLineLog(const std::vector<CommandLineEntry>& lines);

/// The columns of the tables, in their order.
std::vector<std::string_view> trajectoryColumns();
std::vector<std::string_view> entityColumns();

const char* kindName(RowKind kind);
const char* kindName(LineKind kind);

}  // namespace workbench

#endif
