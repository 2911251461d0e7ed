#include "viewports.h"

namespace standin::host {

LayoutViewport::LayoutViewport(int number, double width, double height)
    : mNumber(number),
      mWidth(width),
      mHeight(height),
      mViewHeight(height),
      mViewCentre(width / 2, height / 2) {
  ObjectAccess::setKey(*this, kViewportKey + static_cast<std::uint64_t>(number));
}

Acad::ErrorStatus LayoutViewport::subGetGeomExtents(AcDbExtents& extents) const {
  extents = AcDbExtents({0, 0, 0}, {mWidth, mHeight, 0});
  return Acad::eOk;
}

Acad::ErrorStatus LayoutViewport::subTransformBy(const AcGeMatrix3d& /*transform*/) {
  return Acad::eNotApplicable;
}

TileRecord::TileRecord() {
  ObjectAccess::setKey(*this, kTileKey);
}

}  // namespace standin::host
