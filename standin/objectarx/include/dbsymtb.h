/// Records of the table of model-tab viewports. Main thread only.
#ifndef STANDIN_DBSYMTB_H
#define STANDIN_DBSYMTB_H

#include "dbmain.h"
#include "gepnt2d.h"

/// A stored view: the shown area in the view's own plane, drawing units.
class STANDIN_OBJECTARX_API AcDbAbstractViewTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord)

  AcGePoint2d centerPoint() const;
  void setCenterPoint(const AcGePoint2d& centre);
  double width() const;
  double height() const;
  void setHeight(double height);

 protected:
  AcDbAbstractViewTableRecord() = default;

  AcGePoint2d mCentre;
  double mWidth = 1;
  double mHeight = 1;
};

/// A tile of the model tab.
class STANDIN_OBJECTARX_API AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)

 protected:
  AcDbViewportTableRecord() = default;
};

#endif
