#include "workbench/comparing/compare.h"

#include "workbench/comparing/compare_outputs.h"
#include "workbench/comparing/compare_parts.h"
#include "workbench/exit_status.h"
#include "workbench/input_error.h"
#include "workbench/platform/desktop.h"
#include "workbench/progress_line.h"
#include "workbench/report/page_text.h"
#include "workbench/report/report.h"
#include "workbench/running/result_folder.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace workbench {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

/// What the page shows of run A only: the drawing, and what was on the screen at its moments.
constexpr std::string_view kOfOneRun[] = {"shapes",   "moments", "selected", "selections", "changes",
                                          "desktops", "log",     "log_note", "log_follows"};

/// The name for people: `run` may end with a separator, or be ".".
std::string folderName(const fs::path& run) {
  const fs::path whole = fs::weakly_canonical(run);
  return toUtf8((whole.has_filename() ? whole : whole.parent_path()).filename().string());
}

/// The data of a run's report, as JSON.
std::string reportData(const fs::path& run) {
  const fs::path file = run / "index.html";
  const std::string page = readFile(file, "the report of a run");
  const auto data = reportPageData(page);
  if (!data || data->substr(0, 1) != "{" || !Json::accept(*data))
    throw InputError({file.string()}, "the report of a run of this version of the workbench",
                     "another page; replay the session again");
  return std::string(*data);
}

/// The keys of B's report that the page of A gets as well.
Json secondRun(const std::string& reportData) {
  return Json::parse(reportData, [](int depth, Json::parse_event_t event, const Json& value) {
    if (depth != 1 || event != Json::parse_event_t::key) return true;
    const std::string key = value.get<std::string>();
    return std::find(std::begin(kOfOneRun), std::end(kOfOneRun), key) == std::end(kOfOneRun);
  });
}

/// The report of A with two more keys.
std::string pageData(const CompareOptions& options, const Json& comparison) {
  std::string data = reportData(options.runA);
  // Added as text: the report of a large drawing would need several times its size as values.
  data.pop_back();
  data += ",\"compared\":" + scriptJson(comparison);
  data += ",\"other\":" + scriptJson(secondRun(reportData(options.runB))) + "}";
  return data;
}

Comparison compareRuns(const CompareOptions& options, ProgressLine& line) {
  const auto both = [&options, &line](const char* name) {
    line.show(std::string("compare: ") + name);
    return std::pair(options.runA / name, options.runB / name);
  };
  Comparison comparison;
  comparison.runs = {folderName(options.runA), folderName(options.runB)};
  // The summary first: a folder that no run has written is most likely recognised by it.
  const auto [summaryA, summaryB] = both("summary.json");
  compareSummaries(summaryA, summaryB, comparison);
  const auto [trajectoryA, trajectoryB] = both("trajectory.csv");
  comparison.trajectory = compareTrajectories(trajectoryA, trajectoryB);
  const auto [textsA, textsB] = both("commandline.log");
  comparison.texts = compareTexts(textsA, textsB);
  const auto [entitiesA, entitiesB] = both("entities.csv");
  comparison.entities = compareEntities(entitiesA, entitiesB);
  return comparison;
}

}  // namespace

int runCompare(const CompareOptions& options, std::ostream& out, std::ostream& err) {
  checkFiles(options);
  ResultFolder results(options.out);
  Comparison comparison;
  {
    ProgressLine line(err, isErrorTerminal());
    comparison = compareRuns(options, line);
    const Json json = comparisonJson(comparison);
    line.show("compare: index.html");
    const std::string data = pageData(options, json);
    results.begin();
    writeFile(results.partial() / "compare.json",
              json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n");
    writeFile(results.partial() / "index.html",
              reportPage(comparison.runs[0] + " and " + comparison.runs[1], data));
    results.putInPlace({"compare.json", "index.html"});
  }
  printComparison(comparison, out);
  out << (options.out / "index.html").generic_string() << "\n";
  flushOutput(out);
  return comparison.isEqual() ? kExitClean : kExitUnclean;
}

}  // namespace workbench
