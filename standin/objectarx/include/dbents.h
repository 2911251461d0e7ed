/// Entities the module knows by class. Main thread only.
#ifndef STANDIN_DBENTS_H
#define STANDIN_DBENTS_H

#include "dbmain.h"
#include "gepnt2d.h"

/// A straight line.
class STANDIN_OBJECTARX_API AcDbLine : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine)

  /// eNotOpenForRead, with the point untouched, when the line is not open.
  Acad::ErrorStatus getStartPoint(AcGePoint3d& start) const;
  Acad::ErrorStatus getEndPoint(AcGePoint3d& end) const;
  AcGePoint3d startPoint() const;
  AcGePoint3d endPoint() const;

 protected:
  AcDbLine(const AcGePoint3d& start, const AcGePoint3d& end) : mStart(start), mEnd(end) {}
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;

  AcGePoint3d mStart;
  AcGePoint3d mEnd;
};

/// A viewport of a layout. Lengths in drawing units.
class STANDIN_OBJECTARX_API AcDbViewport : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewport)

  double width() const;   ///< size on the sheet
  double height() const;  ///< size on the sheet
  double viewHeight() const;
  Acad::ErrorStatus setViewHeight(double height);
  AcGePoint2d viewCenter() const;
  Acad::ErrorStatus setViewCenter(const AcGePoint2d& centre);
  /// Draws what the viewport shows.
  Acad::ErrorStatus updateDisplay() const;

 protected:
  AcDbViewport() = default;
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override;
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override;

  int mNumber = 0;
  double mWidth = 1;
  double mHeight = 1;
  double mViewHeight = 1;
  AcGePoint2d mViewCentre;
};

#endif
