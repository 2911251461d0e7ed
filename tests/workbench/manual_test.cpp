/// The documents name everything that the program reads and writes, no more and no less.
#include "workbench/comparing/compare_outputs.h"
#include "workbench/dxf/entity_types.h"
#include "workbench/options.h"
#include "workbench/report/report_scene.h"
#include "workbench/running/outputs.h"
#include "workbench/running/summary.h"
#include "workbench/sessions/session.h"
#include "workbench/text_input.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <regex>
#include <sstream>

namespace workbench {
namespace {

using ::testing::ElementsAreArray;
using ::testing::UnorderedElementsAreArray;
using Texts = std::vector<std::string>;

std::string document(const char* name) {
  return readFile(std::string(LM_DOCS) + "/" + name, "a document");
}

/// The text below a heading, up to the next one of its level.
std::string section(const std::string& text, const std::string& heading) {
  const std::size_t begin = text.find("\n" + heading + "\n");
  if (begin == std::string::npos) throw std::runtime_error("no heading " + heading);
  const std::string level = heading.substr(0, heading.find(' ') + 1);
  return text.substr(begin, text.find("\n" + level, begin + 1) - begin);
}

/// What the expression's group matches, in order.
Texts all(const std::string& text, const char* expression) {
  const std::regex pattern(expression);
  Texts found;
  for (std::sregex_iterator at(text.begin(), text.end(), pattern), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

/// First cells of a section's table whose header begins so.
Texts rows(const std::string& text, const std::string& header) {
  const std::size_t begin = text.find("| " + header + " |");
  if (begin == std::string::npos) throw std::runtime_error("no table of " + header);
  return all(text.substr(begin, text.find("\n\n", begin) - begin), "\n\\| `([^`]+)`");
}

Texts split(const std::string& line) {
  Texts parts;
  std::istringstream stream(line.substr(0, line.find('\n')));
  for (std::string part; std::getline(stream, part, ',');) parts.push_back(part);
  return parts;
}

Texts keysOf(const nlohmann::ordered_json& json) {
  Texts keys;
  for (const auto& item : json.items()) keys.push_back(item.key());
  return keys;
}

TEST(Manual, SessionManualHasASectionForEveryVerb) {
  Texts verbs;
  for (const SessionVerb& verb : sessionVerbs())
    verbs.push_back(std::string(verb.name) + (verb.arguments.empty() ? "" : " ") +
                    std::string(verb.arguments));
  EXPECT_THAT(all(document("sessions.md"), "\n### `([^`]+)`"), ElementsAreArray(verbs));
}

TEST(Manual, SessionManualListsEveryOption) {
  std::string help;
  try {
    parseOptions({"replay", "--help"});
  } catch (const HelpWanted& wanted) {
    help = wanted.text;
  }
  Texts options = all(help, "\n +(--[a-z-]+)");
  options.push_back("--help");
  EXPECT_THAT(rows(document("sessions.md"), "Option"), ElementsAreArray(options));
}

TEST(Manual, SessionManualListsEveryTypeOfEntity) {
  const std::string text = section(document("sessions.md"), "## Drawings");
  Texts types;
  for (const DxfEntityType& type : dxfEntityTypes()) types.emplace_back(type.name);
  EXPECT_THAT(all(text.substr(0, text.find("are drawn")), "\\b([A-Z0-9]{3,})\\b(?! text)"),
              UnorderedElementsAreArray(types));
}

TEST(Manual, OutputManualListsEveryColumnOfTheTrajectory) {
  const std::string text = section(document("outputs.md"), "## `trajectory.csv`");
  EXPECT_THAT(rows(text, "Column"), ElementsAreArray(split(trajectoryCsv({}))));
}

TEST(Manual, OutputManualListsEveryKindOfRow) {
  Texts kinds;
  for (const RowKind kind : kRowKinds) kinds.push_back(kindName(kind));
  EXPECT_THAT(rows(section(document("outputs.md"), "## `trajectory.csv`"), "Kind"), ElementsAreArray(kinds));
}

TEST(Manual, OutputManualListsEveryColumnAndTypeOfTheEntities) {
  const std::string text = section(document("outputs.md"), "## `entities.csv`");
  EXPECT_THAT(rows(text, "Column"), ElementsAreArray(split(entitiesCsv({}))));
  Texts types;
  for (const DxfEntityType& type : dxfEntityTypes()) types.emplace_back(type.name);
  EXPECT_THAT(
      all(text.substr(text.find("one of"), text.find(" | `LINE` |") - text.find("one of")), "`([^`]+)`"),
      ElementsAreArray(types));
}

TEST(Manual, OutputManualListsEveryKindOfLine) {
  Texts kinds;
  for (const LineKind kind : kLineKinds) kinds.push_back(kindName(kind));
  EXPECT_THAT(rows(section(document("outputs.md"), "## `commandline.log`"), "Kind"), ElementsAreArray(kinds));
}

TEST(Manual, OutputManualListsEveryKeyOfTheSummary) {
  const auto summary = nlohmann::ordered_json::parse(summaryJson(RunResult(), RunNames()));
  EXPECT_THAT(rows(section(document("outputs.md"), "## `summary.json`"), "Key"),
              ElementsAreArray(keysOf(summary)));
}

TEST(Manual, OutputManualListsEveryKeyOfAComparison) {
  EXPECT_THAT(rows(section(document("outputs.md"), "## `compare.json`"), "Key"),
              ElementsAreArray(keysOf(comparisonJson(Comparison()))));
}

TEST(Manual, OutputManualListsEveryKeyOfThePagesData) {
  EXPECT_THAT(rows(section(document("outputs.md"), "## `index.html`"), "Key"),
              ElementsAreArray(keysOf(reportJson(ReportData()))));
}

}  // namespace
}  // namespace workbench
