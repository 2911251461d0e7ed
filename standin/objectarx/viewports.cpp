/// Database objects of viewports: their ids and what they show at first.
#include "viewports.h"

#include "object_access.h"
#include "object_id.h"

namespace standin::host {

LayoutViewport::LayoutViewport(std::uint64_t drawing, int number, double width, double height)
    : mNumber(number),
      mWidth(width),
      mHeight(height),
      mViewHeight(height),
      mViewCentre(width / 2, height / 2) {
  ObjectAccess::setKey(*this, objectId(drawing, kFirstViewport + static_cast<std::uint64_t>(number)));
}

TileRecord::TileRecord(std::uint64_t drawing) {
  // Number 0 of the viewports: those of the layout count from 1.
  ObjectAccess::setKey(*this, objectId(drawing, kFirstViewport));
}

Acad::ErrorStatus LayoutViewport::subGetGeomExtents(AcDbExtents& extents) const {
  extents = AcDbExtents({0, 0, 0}, {mWidth, mHeight, 0});
  return Acad::eOk;
}

Acad::ErrorStatus LayoutViewport::subTransformBy(const AcGeMatrix3d& /*transform*/) {
  // The module moves what a viewport shows, never the viewport itself.
  return Acad::eNotApplicable;
}

}  // namespace standin::host
