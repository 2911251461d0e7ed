/// A comparison as lines for people and as JSON for programs and for the page. docs/outputs.md describes
/// both.
#ifndef WORKBENCH_COMPARE_OUTPUTS_H
#define WORKBENCH_COMPARE_OUTPUTS_H

#include "workbench/comparing/comparison.h"

#include <nlohmann/json_fwd.hpp>

#include <ostream>
#include <string>

namespace workbench {

/// At most this many lines of text, entities of a kind and so on are listed; the JSON has all.
constexpr std::size_t kMostPrinted = 20;

void printComparison(const Comparison& comparison, std::ostream& out);

nlohmann::ordered_json comparisonJson(const Comparison& comparison);

}  // namespace workbench

#endif
