/// Database objects that hold what a viewport shows: the viewports of the layout, the record of the model
/// tile.
#ifndef STANDIN_VIEWPORTS_H
#define STANDIN_VIEWPORTS_H

#include "camera.h"
#include "object_access.h"

// clang-format off
#include "dbents.h"
#include "dbsymtb.h"
// clang-format on

namespace standin::host {

/// Every AcDbViewport is one of these.
class LayoutViewport final : public AcDbViewport, public EntityGeometry {
 public:
  /// Viewport `number` of the layout of the drawing with that serial number. Shows an area of its own size,
  /// its lower left corner at the origin.
  LayoutViewport(std::uint64_t drawing, int number, double width, double height);

  PaperView shown() const {
    return {mViewCentre.x, mViewCentre.y, mWidth / mHeight * mViewHeight, mViewHeight};
  }
  void show(const AcGePoint2d& centre, double viewHeight) {
    mViewCentre = centre;
    mViewHeight = viewHeight;
  }

  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;

  int mNumber;
  double mWidth;
  double mHeight;
  double mViewHeight;
  AcGePoint2d mViewCentre;
};

/// Every AcDbAbstractViewTableRecord is one of these.
class TileRecord final : public AcDbViewportTableRecord {
 public:
  explicit TileRecord(std::uint64_t drawing);

  PaperView shown() const { return {mCentre.x, mCentre.y, mWidth, mHeight}; }
  void show(const PaperView& view) {
    mCentre = {view.centerX, view.centerY};
    mWidth = view.width;
    mHeight = view.height;
  }

  AcGePoint2d mCentre;
  double mWidth = 1;
  double mHeight = 1;
};

}  // namespace standin::host

#endif
