#include "workbench/comparing/compare_outputs.h"

#include "workbench/text_input.h"

#include <nlohmann/json.hpp>

#include <charconv>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kRunNames[] = {"A", "B"};

/// Short, and independent of the locale.
std::string shown(double value) {
  char text[40];
  const auto end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6);
  return {text, end.ptr};
}

std::string listed(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

template <typename Print, typename List>
void printSome(std::ostream& out, const char* what, const List& list, Print print) {
  for (std::size_t i = 0; i < list.size() && i < kMostPrinted; ++i) {
    out << what << ": ";
    print(list[i]);
    out << "\n";
  }
  if (list.size() > kMostPrinted)
    out << what << ": ... and " << list.size() - kMostPrinted << " more, see compare.json\n";
}

void printRun(const Comparison& comparison, std::size_t run, std::ostream& out) {
  out << kRunNames[run] << ": " << comparison.runs[run] << " (" << comparison.drawings[run] << ", "
      << comparison.sessions[run] << "), " << comparison.trajectory.rows[run] << " rows of the trajectory, "
      << comparison.texts.lines[run] << " texts, " << comparison.entities.count[run] << " entities\n";
}

void printFirst(const FirstDifference& first, std::ostream& out) {
  out << "trajectory: first difference in line " << first.line << ": ";
  for (std::size_t run = 0; run < 2; ++run)
    // A line that only one of the runs has.
    if (first.timeMs[1 - run].empty())
      out << "only " << kRunNames[run] << " has it (" << first.timeMs[run] << " ms)\n";
  if (first.columns.empty()) return;
  const bool isSameTime = first.timeMs[0] == first.timeMs[1];
  out << listed(first.columns) << " (" << first.timeMs[0] << (isSameTime ? "" : " and " + first.timeMs[1])
      << " ms)\n";
}

void printColumn(const ColumnDifference& column, std::ostream& out) {
  out << column.column << " differs in " << column.rows << (column.rows == 1 ? " row" : " rows");
  if (column.largest) out << ", by at most " << shown(*column.largest);
  out << ": line " << column.line << ", " << column.values[0] << " and " << column.values[1];
}

void printEntity(const EntityDifference& entity, std::ostream& out) {
  out << entity.type << " " << entity.handle;
  if (entity.columns.empty()) return;
  out << " differs in " << listed(entity.columns);
  if (entity.moved) out << ", moved by at most " << shown(*entity.moved);
}

/// A field of a table: a number where it is a finite one.
Json fieldJson(const std::string& field) {
  if (const auto whole = parseInteger(field)) return *whole;
  const auto real = parseReal(field);
  return real ? Json(*real) : Json(field);
}

/// Null for a run that has no such row.
Json timesJson(const Both& times) {
  Json json = Json::array();
  for (const std::string& time : times) json.push_back(time.empty() ? Json() : fieldJson(time));
  return json;
}

Json firstJson(const FirstDifference& first) {
  return {{"line", first.line}, {"time_ms", timesJson(first.timeMs)}, {"columns", first.columns}};
}

Json columnJson(const ColumnDifference& column) {
  Json json{{"column", column.column}, {"rows", column.rows}};
  // Null where the difference has no finite size.
  json["largest"] = column.largest ? Json(*column.largest) : Json();
  json["line"] = column.line;
  json["time_ms"] = timesJson(column.timeMs);
  json["values"] = Json::array({fieldJson(column.values[0]), fieldJson(column.values[1])});
  return json;
}

Json lineJson(const TextLine& line) {
  return {{"line", line.line}, {"text", line.text}};
}

Json entityJson(const EntityDifference& entity) {
  Json json{{"handle", entity.handle}, {"type", entity.type}, {"columns", entity.columns}};
  json["moved"] = entity.moved ? Json(*entity.moved) : Json();
  return json;
}

template <typename List, typename ToJson>
Json array(const List& list, ToJson toJson) {
  Json json = Json::array();
  for (const auto& element : list) json.push_back(toJson(element));
  return json;
}

}  // namespace

void printComparison(const Comparison& comparison, std::ostream& out) {
  for (std::size_t run = 0; run < 2; ++run) printRun(comparison, run, out);
  const TrajectoryComparison& trajectory = comparison.trajectory;
  if (trajectory.first) printFirst(*trajectory.first, out);
  printSome(out, "trajectory", trajectory.columns, [&out](const auto& column) { printColumn(column, out); });
  for (std::size_t run = 0; run < 2; ++run)
    printSome(out, "texts", comparison.texts.only[run], [&out, run](const TextLine& line) {
      out << "only " << kRunNames[run] << ", line " << line.line << ": " << line.text;
    });
  if (const auto& moved = comparison.texts.firstMoved)
    out << "texts: the same in another order, first in line " << moved->line << ": " << moved->text << "\n";
  for (std::size_t run = 0; run < 2; ++run)
    printSome(out, "entities", comparison.entities.only[run], [&out, run](const EntityDifference& entity) {
      out << "only " << kRunNames[run] << ": ";
      printEntity(entity, out);
    });
  printSome(out, "entities", comparison.entities.changed,
            [&out](const EntityDifference& entity) { printEntity(entity, out); });
  printSome(out, "summary", comparison.summary, [&out](const SummaryDifference& difference) {
    out << difference.key;
    for (std::size_t run = 0; run < 2; ++run)
      out << (run == 0 ? ": " : " and ")
          << (difference.values[run].empty() ? "nothing" : difference.values[run]);
  });
  out << (comparison.isEqual() ? "The runs are equal.\n" : "The runs differ.\n");
}

Json comparisonJson(const Comparison& comparison) {
  Json json{{"runs", comparison.runs},
            {"drawings", comparison.drawings},
            {"sessions", comparison.sessions},
            {"equal", comparison.isEqual()}};
  const TrajectoryComparison& trajectory = comparison.trajectory;
  json["rows"] = trajectory.rows;
  json["first"] = trajectory.first ? firstJson(*trajectory.first) : Json();
  json["columns"] = array(trajectory.columns, columnJson);
  json["lines"] = comparison.texts.lines;
  json["lines_only"] = array(comparison.texts.only, [](const auto& lines) { return array(lines, lineJson); });
  json["lines_moved"] = comparison.texts.firstMoved ? lineJson(*comparison.texts.firstMoved) : Json();
  json["entities"] = comparison.entities.count;
  json["entities_only"] =
      array(comparison.entities.only, [](const auto& entities) { return array(entities, entityJson); });
  json["entities_changed"] = array(comparison.entities.changed, entityJson);
  json["summary"] = array(comparison.summary, [](const SummaryDifference& difference) {
    return Json{{"key", difference.key}, {"values", difference.values}};
  });
  return json;
}

}  // namespace workbench
