#include "workbench/comparing/compare_parts.h"
#include "workbench/comparing/table_reader.h"
#include "workbench/running/outputs.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace workbench {
namespace {

bool isKind(std::string_view text) {
  return std::any_of(std::begin(kRowKinds), std::end(kRowKinds),
                     [text](RowKind kind) { return text == kindName(kind); });
}

/// Columns that are no numbers.
struct WordColumn {
  std::string_view name;
  bool (*isValid)(std::string_view);
  const char* expected;
};
constexpr WordColumn kWordColumns[] = {
    {"kind", isKind, "a kind of row"},
    {"projection", [](std::string_view text) { return text == "parallel" || text == "perspective"; },
     "parallel or perspective"}};

const WordColumn* wordColumn(std::string_view name) {
  for (const WordColumn& column : kWordColumns)
    if (column.name == name) return &column;
  return nullptr;
}

/// The table of one run, checked row by row as it is read.
class Trajectory {
 public:
  explicit Trajectory(const std::filesystem::path& file) : mTable(file, trajectoryColumns()) {
    for (const std::string_view name : trajectoryColumns()) mWords.push_back(wordColumn(name));
  }

  bool next() {
    if (!mTable.next()) return false;
    for (std::size_t i = 0; i < mWords.size(); ++i) {
      if (mWords[i] == nullptr)
        realField(mTable, i);
      else if (!mWords[i]->isValid(mTable.fields()[i]))
        throw mTable.error(mWords[i]->expected, inQuotes(mTable.fields()[i]));
    }
    return true;
  }
  std::string field(std::size_t column) const { return std::string(mTable.fields()[column]); }
  const TableReader& table() const { return mTable; }
  /// None for a word.
  std::optional<double> number(std::size_t column) const {
    return mWords[column] == nullptr ? std::optional(realField(mTable, column)) : std::nullopt;
  }

 private:
  TableReader mTable;
  std::vector<const WordColumn*> mWords;
};

/// Size of the difference; none when it has no finite one.
std::optional<double> sizeOf(const Trajectory& a, const Trajectory& b, std::size_t column) {
  const auto p = a.number(column), q = b.number(column);
  if (!p || !q || !std::isfinite(*p - *q)) return std::nullopt;
  return std::abs(*p - *q);
}

constexpr std::size_t kTimeColumn = 0;

void note(ColumnDifference& difference, const Trajectory& a, const Trajectory& b, std::size_t column) {
  const auto size = sizeOf(a, b, column);
  const bool isFirst = difference.rows++ == 0;
  // What has no size is beyond every size, and the first of its kind stays.
  const bool isLarger = isFirst || (difference.largest && (!size || *size > *difference.largest));
  if (!isLarger) return;
  difference.largest = size;
  difference.line = a.table().line();
  difference.timeMs = {a.field(kTimeColumn), b.field(kTimeColumn)};
  difference.values = {a.field(column), b.field(column)};
}

void compareRows(const Trajectory& a, const Trajectory& b, TrajectoryComparison& result,
                 std::vector<ColumnDifference>& columns) {
  const bool isFirst = !result.first;
  for (std::size_t i = 0; i < columns.size(); ++i) {
    if (a.table().fields()[i] == b.table().fields()[i]) continue;
    note(columns[i], a, b, i);
    if (!result.first)
      result.first = FirstDifference{a.table().line(), {a.field(kTimeColumn), b.field(kTimeColumn)}, {}};
    if (isFirst) result.first->columns.push_back(columns[i].column);
  }
}

/// The row that only one of the runs has, and those after it.
void readRest(Trajectory& trajectory, std::size_t run, TrajectoryComparison& result) {
  if (!result.first) {
    result.first = FirstDifference{trajectory.table().line(), {}, {}};
    result.first->timeMs[run] = trajectory.field(kTimeColumn);
  }
  // Read to the end for their number, and because a broken row is bad input wherever it is.
  while (trajectory.next()) continue;
}

}  // namespace

TrajectoryComparison compareTrajectories(const std::filesystem::path& a, const std::filesystem::path& b) {
  Trajectory runA(a), runB(b);
  TrajectoryComparison result;
  std::vector<ColumnDifference> columns;
  for (const std::string_view name : trajectoryColumns()) {
    columns.emplace_back();
    columns.back().column = name;
  }
  while (true) {
    const bool hasA = runA.next(), hasB = runB.next();
    if (hasA && hasB) {
      compareRows(runA, runB, result, columns);
      continue;
    }
    if (hasA) readRest(runA, 0, result);
    if (hasB) readRest(runB, 1, result);
    break;
  }
  result.rows = {runA.table().rows(), runB.table().rows()};
  std::copy_if(columns.begin(), columns.end(), std::back_inserter(result.columns),
               [](const ColumnDifference& column) { return column.rows != 0; });
  return result;
}

}  // namespace workbench
