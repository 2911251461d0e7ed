/// The application functions that a menu file holds, with their labels, for the report.
#ifndef WORKBENCH_MENU_FUNCTIONS_H
#define WORKBENCH_MENU_FUNCTIONS_H

#include "workbench/report/report.h"

#include <string_view>
#include <vector>

namespace workbench {

/// Entry N is application function N: the values "{LABEL}MACRO|HELP" of the section MenuBar that have a label
/// and a macro, in the order of the file. The section ends at the first line that is no parameter and does
/// not begin with "#". Read apart from the module, so that the report does not repeat an error of its own.
std::vector<ReportFunction> menuFunctions(std::string_view menuFile);

}  // namespace workbench

#endif
