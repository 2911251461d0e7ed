/// Point in a plane. Any thread.
#ifndef STANDIN_GEPNT2D_H
#define STANDIN_GEPNT2D_H

#include "standin_objectarx_api.h"

#include "gevec2d.h"

class AcGePoint2d {
 public:
  STANDIN_OBJECTARX_API static const AcGePoint2d kOrigin;

  constexpr AcGePoint2d() = default;
  constexpr AcGePoint2d(double xIn, double yIn) : x(xIn), y(yIn) {}

  constexpr AcGePoint2d operator+(const AcGeVector2d& v) const { return {x + v.x, y + v.y}; }
  constexpr AcGePoint2d operator-(const AcGeVector2d& v) const { return {x - v.x, y - v.y}; }
  constexpr AcGeVector2d operator-(const AcGePoint2d& p) const { return {x - p.x, y - p.y}; }

  double x = 0;
  double y = 0;
};

#endif
