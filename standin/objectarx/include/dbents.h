/// Entities the module knows by class. Main thread only.
#ifndef STANDIN_DBENTS_H
#define STANDIN_DBENTS_H

#include "dbmain.h"
#include "gepnt2d.h"

class STANDIN_OBJECTARX_CLASS AcDbCurve : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbCurve)
};

/// A straight line.
class STANDIN_OBJECTARX_CLASS AcDbLine : public AcDbCurve {
 public:
  ACRX_DECLARE_MEMBERS(AcDbLine)

  STANDIN_SLOTS_4(AcDbLine, 173, 174, 175, 176)
  /// Slots 177 and 178. eNotOpenForRead, with the point untouched, when the line is not open.
  virtual Acad::ErrorStatus getStartPoint(AcGePoint3d& start) const = 0;
  virtual Acad::ErrorStatus getEndPoint(AcGePoint3d& end) const = 0;
  STANDIN_SLOT(AcDbLine, 179)
  STANDIN_SLOTS_10(AcDbLine, 18)
  STANDIN_SLOTS_10(AcDbLine, 19)
  STANDIN_SLOTS_4(AcDbLine, 200, 201, 202, 203)

  STANDIN_OBJECTARX_MEMBER AcGePoint3d startPoint() const;
  STANDIN_OBJECTARX_MEMBER AcGePoint3d endPoint() const;
};

/// A viewport of a layout. Lengths in drawing units.
class STANDIN_OBJECTARX_CLASS AcDbViewport : public AcDbEntity {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewport)

  STANDIN_OBJECTARX_MEMBER double width() const;   ///< size on the sheet
  STANDIN_OBJECTARX_MEMBER double height() const;  ///< size on the sheet
  STANDIN_OBJECTARX_MEMBER double viewHeight() const;
  STANDIN_OBJECTARX_MEMBER Acad::ErrorStatus setViewHeight(double height);
  STANDIN_OBJECTARX_MEMBER AcGePoint2d viewCenter() const;
  STANDIN_OBJECTARX_MEMBER Acad::ErrorStatus setViewCenter(const AcGePoint2d& centre);
  /// Draws what the viewport shows.
  STANDIN_OBJECTARX_MEMBER Acad::ErrorStatus updateDisplay() const;

 protected:
  AcDbViewport() = default;
};

#endif
