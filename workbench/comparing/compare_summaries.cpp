#include "workbench/comparing/compare_parts.h"
#include "workbench/input_error.h"
#include "workbench/text_input.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

Json readSummary(const std::filesystem::path& file) {
  const std::string text = readFile(file, "the summary of a run");
  try {
    Json json = Json::parse(text);
    if (json.is_object() && json.contains("clean")) return json;
  } catch (const Json::parse_error& error) {
    const auto end = text.begin() + static_cast<std::ptrdiff_t>(std::min(error.byte, text.size()));
    const auto line = 1 + std::count(text.begin(), end, '\n');
    throw InputError({file.string(), static_cast<std::size_t>(line)}, "the summary of a run (JSON)",
                     "what is no JSON");
  }
  throw InputError({file.string(), 1}, "the summary of a run (JSON)", "other JSON");
}

/// The value as JSON, empty when there is none.
std::string valueOf(const Json& summary, const std::string& key) {
  return summary.contains(key) ? summary[key].dump() : std::string();
}

std::string nameOf(const Json& summary, const char* key) {
  const auto value = summary.find(key);
  return value != summary.end() && value->is_string() ? value->get<std::string>() : std::string();
}

}  // namespace

void compareSummaries(const std::filesystem::path& a, const std::filesystem::path& b,
                      Comparison& comparison) {
  const Json summaryA = readSummary(a), summaryB = readSummary(b);
  comparison.drawings = {nameOf(summaryA, "drawing"), nameOf(summaryB, "drawing")};
  comparison.sessions = {nameOf(summaryA, "session"), nameOf(summaryB, "session")};
  // A key that only one of them has, as from another release, is a difference as well.
  Json keys = summaryA;
  keys.update(summaryB);
  for (const auto& [key, ignored] : keys.items()) {
    // Two sessions may differ in their comments only, so their names say nothing about the runs.
    if (key == "drawing" || key == "session") continue;
    Both values{valueOf(summaryA, key), valueOf(summaryB, key)};
    if (values[0] != values[1]) comparison.summary.push_back({key, std::move(values)});
  }
}

}  // namespace workbench
