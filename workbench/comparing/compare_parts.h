/// Compares the results of two runs, file by file. Every function throws InputError with file and line when
/// one of the files is not what a run writes. Main thread.
#ifndef WORKBENCH_COMPARE_PARTS_H
#define WORKBENCH_COMPARE_PARTS_H

#include "workbench/comparing/comparison.h"

#include <filesystem>

namespace workbench {

/// Row by row: the first with the first, the second with the second. Equal means equal as text, so that no
/// tolerance hides the smallest change.
TrajectoryComparison compareTrajectories(const std::filesystem::path& a, const std::filesystem::path& b);

/// Command lines: which lines (time, kind and text) only one of the runs has.
TextComparison compareTexts(const std::filesystem::path& a, const std::filesystem::path& b);

/// By handle.
EntityComparison compareEntities(const std::filesystem::path& a, const std::filesystem::path& b);

/// Key by key; puts the names of drawing and session into `comparison`, which are no differences.
void compareSummaries(const std::filesystem::path& a, const std::filesystem::path& b, Comparison& comparison);

}  // namespace workbench

#endif
