#include "viewports.h"

#include "object_access.h"

namespace standin::host {

LayoutViewport::LayoutViewport(int number, double width, double height) {
  ObjectAccess::setKey(*this, kViewportKey + static_cast<std::uint64_t>(number));
  mNumber = number;
  mWidth = width;
  mHeight = height;
  mViewHeight = height;
  mViewCentre = {width / 2, height / 2};
}

TileRecord::TileRecord() {
  ObjectAccess::setKey(*this, kTileKey);
}

}  // namespace standin::host
