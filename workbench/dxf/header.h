/// The header of a DXF file: variables, each a group 9 with its name and the groups of its value.
#ifndef WORKBENCH_DXF_HEADER_H
#define WORKBENCH_DXF_HEADER_H

#include "workbench/dxf/group.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace workbench {

/// The first value of a header variable ("$ACADVER"), without blanks around it; empty when there is none.
std::string_view headerText(const std::vector<DxfGroup>& groups, std::string_view variable);

/// The day on which the drawing was made ($TDCREATE), or else last saved ($TDUPDATE), in days since
/// 1970-01-01; none when the header has neither or a day before 1970 or after 2999.
std::optional<std::int64_t> headerDay(const std::vector<DxfGroup>& groups);

}  // namespace workbench

#endif
