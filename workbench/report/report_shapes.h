/// Shapes as the page reads them: columns of handles, types and coordinates. docs/outputs.md describes the
/// keys.
#ifndef WORKBENCH_REPORT_SHAPES_H
#define WORKBENCH_REPORT_SHAPES_H

#include "workbench/report/report_data.h"

#include <nlohmann/json_fwd.hpp>

#include <cstddef>
#include <vector>

namespace workbench {

/// The shapes in their order; neighbours of one layer and colour are a group.
nlohmann::ordered_json shapesJson(const std::vector<const ReportShape*>& shapes);

/// Characters that a shape takes in the page.
std::size_t sizeInPage(const ReportShape& shape);

/// The shapes by layer and colour, within each in their order. When all of them take more than `most`
/// characters, the smallest of the drawing are left out: those that are seen least.
std::vector<const ReportShape*> shapesForPage(const std::vector<ReportShape>& shapes, std::size_t most);

}  // namespace workbench

#endif
