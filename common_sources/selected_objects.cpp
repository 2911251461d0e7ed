#include "common_sources/selected_objects.h"

#include "common_sources/host_objects.h"

#include "dbents.h"

#include <cmath>

namespace {

constexpr int kDrawEntity = 1;  // mode of acedRedraw
// Of the squared length; far above rounding and far below any vector that was not normalised.
constexpr double kUnitTolerance = 1e-6;

/// The centre of the entity's box; none when it cannot be opened or has no box.
std::optional<AcGeVector3d> boxCentre(const ads_name name) {
  Opened<AcDbEntity> entity = openEntity(name, AcDb::kForRead);
  AcDbExtents box;
  const bool isFound = entity && entity->getGeomExtents(box) == Acad::eOk;
  // Closed before the test of the result, so that every path leaves it closed.
  entity.close();
  if (!isFound) return std::nullopt;
  const AcGePoint3d low = box.minPoint();
  const AcGePoint3d high = box.maxPoint();
  return AcGeVector3d((low.x + high.x) * 0.5, (low.y + high.y) * 0.5, (low.z + high.z) * 0.5);
}

}  // namespace

std::optional<AcGePoint3d> meanOfBoxCentres(const ads_name selectionSet) {
  const AdInt32 count = selectionLength(selectionSet);
  if (count == 0) return std::nullopt;
  AcGeVector3d sum(0, 0, 0);
  AdInt32 boxes = 0;
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name{};
    if (acedSSName(selectionSet, i, name) != RTNORM) return std::nullopt;
    // An erased entity, or an empty block, must not cost the others their centre.
    if (const auto centre = boxCentre(name)) {
      sum += *centre;
      ++boxes;
    }
  }
  // No box at all is a refusal and not "nothing selected": the caller logs it.
  require(boxes > 0);
  return AcGePoint3d(sum.x / boxes, sum.y / boxes, sum.z / boxes);
}

std::optional<AcGePoint3d> meanOfSelectedBoxCentres() {
  ImpliedSelection selection;
  if (!selection.isTaken()) return std::nullopt;
  const std::optional<AcGePoint3d> centre = meanOfBoxCentres(selection.name());
  selection.free();
  return centre;
}

std::optional<Axis> axisOfOnlyLine(const ads_name selectionSet) {
  ads_name name{};
  if (selectionLength(selectionSet) != 1 || acedSSName(selectionSet, 0, name) != RTNORM) return std::nullopt;
  Opened<AcDbEntity> entity = openEntity(name, AcDb::kForRead);
  require(static_cast<bool>(entity));
  AcGePoint3d start, end;
  // Derived classes of a line count, too.
  const bool isLine = entity->isA()->isDerivedFrom(AcDbLine::desc());
  if (isLine) {
    const auto* const lineP = static_cast<const AcDbLine*>(&*entity);
    require(lineP->getStartPoint(start) == Acad::eOk && lineP->getEndPoint(end) == Acad::eOk);
  }
  entity.close();
  if (!isLine) return std::nullopt;
  AcGeVector3d direction = end - start;
  direction.normalize();
  // The host leaves a vector shorter than its tolerance as it is, and such a direction turns nothing rightly.
  const bool isUnit = std::fabs(direction.dotProduct(direction) - 1.0) < kUnitTolerance;
  if (!isUnit) return std::nullopt;
  return Axis{direction, start};
}

std::optional<Axis> axisOfSelectedLine() {
  ImpliedSelection selection;
  if (!selection.isTaken()) return std::nullopt;
  const std::optional<Axis> axis = axisOfOnlyLine(selection.name());
  selection.free();
  return axis;
}

void transformEach(const ads_name selectionSet, const AcGeMatrix3d& motion, Redraw redraw) {
  const AdInt32 count = selectionLength(selectionSet);
  for (AdInt32 i = 0; i < count; ++i) {
    ads_name name{};
    if (acedSSName(selectionSet, i, name) != RTNORM) continue;
    Opened<AcDbEntity> entity = openEntity(name, AcDb::kForWrite);
    // Erased or on a locked layer: the others still move.
    if (!entity) continue;
    entity->transformBy(motion);
    entity.close();
    // Only a closed entity can be drawn.
    if (redraw == Redraw::kYes) acedRedraw(name, kDrawEntity);
  }
}
