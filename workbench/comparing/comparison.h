/// What two runs have not in common, as plain values.
#ifndef WORKBENCH_COMPARISON_H
#define WORKBENCH_COMPARISON_H

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace workbench {

/// One thing in run A and in run B.
using Both = std::array<std::string, 2>;

/// A column of the trajectory in which rows of the same number differ.
struct ColumnDifference {
  std::string column;
  std::size_t rows = 0;           ///< that differ
  std::optional<double> largest;  ///< |A - B|; none when a value is no finite number
  std::size_t line = 0;           ///< of the largest difference, or of the first that has no size
  Both timeMs;                    ///< of that line
  Both values;
};

/// The first row that differs. A run with fewer rows has no values there.
struct FirstDifference {
  std::size_t line = 0;
  Both timeMs;
  std::vector<std::string> columns;  ///< that differ; empty when one of the runs has no such row
};

struct TrajectoryComparison {
  std::array<std::size_t, 2> rows{};
  std::optional<FirstDifference> first;
  std::vector<ColumnDifference> columns;  ///< in the order of the table; only those that differ
};

/// A line of a file.
struct TextLine {
  std::size_t line = 0;
  std::string text;
};

struct TextComparison {
  std::array<std::size_t, 2> lines{};
  std::array<std::vector<TextLine>, 2> only;  ///< lines that the other run has not, or not as often
  /// The first line at which the order differs, when both have the same lines.
  std::optional<TextLine> firstMoved;
};

struct EntityDifference {
  std::string handle;
  std::string type;                  ///< in A; of one that only B has, there
  std::vector<std::string> columns;  ///< that differ; empty when only one of the runs has the entity
  std::optional<double> moved;       ///< largest distance of a point; none when their numbers differ
};

struct EntityComparison {
  std::array<std::size_t, 2> count{};
  std::array<std::vector<EntityDifference>, 2> only;
  std::vector<EntityDifference> changed;
};

/// A value of the summary, as JSON; empty where a run has no such key.
struct SummaryDifference {
  std::string key;
  Both values;
};

struct Comparison {
  Both runs;      ///< names of the folders, without their paths
  Both drawings;  ///< names of the files
  Both sessions;
  TrajectoryComparison trajectory;
  TextComparison texts;
  EntityComparison entities;
  std::vector<SummaryDifference> summary;  ///< the names of the files are no difference

  bool isEqual() const {
    return !trajectory.first && texts.only[0].empty() && texts.only[1].empty() && !texts.firstMoved &&
           entities.only[0].empty() && entities.only[1].empty() && entities.changed.empty() &&
           summary.empty();
  }
};

}  // namespace workbench

#endif
