/// What the module reads from the objects of a selection set, and how it moves them. Main thread. All throw
/// HostRefusal when the host refuses what a result cannot do without, and what the host throws.
#ifndef COMMON_SOURCES_SELECTED_OBJECTS_H
#define COMMON_SOURCES_SELECTED_OBJECTS_H

// clang-format off
#include "adsdef.h"
#include "gepnt3d.h"
#include "gevec3d.h"
#include "gemat3d.h"
// clang-format on

#include <optional>

/// Mean of the centres of the entities' boxes; entities without a box are left out. None when the set is
/// empty or one of its names cannot be read.
std::optional<AcGePoint3d> meanOfBoxCentres(const ads_name selectionSet);

/// The same of the implied selection; none also when nothing is pre-selected.
std::optional<AcGePoint3d> meanOfSelectedBoxCentres();

struct Axis {
  AcGeVector3d direction;  ///< unit vector
  AcGePoint3d point;
};

/// The one line of the set, from its start to its end; none when the set holds anything else, or the line is
/// shorter than the host's tolerance.
std::optional<Axis> axisOfOnlyLine(const ads_name selectionSet);

/// The same of the implied selection; none also when nothing is pre-selected.
std::optional<Axis> axisOfSelectedLine();

enum class Redraw { kNo, kYes };

/// Transforms every entity that can be opened; one that cannot (on a locked layer, erased) is passed over.
void transformEach(const ads_name selectionSet, const AcGeMatrix3d& motion, Redraw redraw);

#endif
