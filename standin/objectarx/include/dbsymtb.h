/// Records of the table of model-tab viewports. Main thread only.
#ifndef STANDIN_DBSYMTB_H
#define STANDIN_DBSYMTB_H

#include "dbmain.h"
#include "gepnt2d.h"

class STANDIN_OBJECTARX_CLASS AcDbSymbolTableRecord : public AcDbObject {
 public:
  ACRX_DECLARE_MEMBERS(AcDbSymbolTableRecord)
};

/// A stored view: the shown area in the view's own plane, drawing units.
class STANDIN_OBJECTARX_CLASS AcDbAbstractViewTableRecord : public AcDbSymbolTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbAbstractViewTableRecord)

  STANDIN_OBJECTARX_MEMBER AcGePoint2d centerPoint() const;
  STANDIN_OBJECTARX_MEMBER void setCenterPoint(const AcGePoint2d& centre);
  STANDIN_OBJECTARX_MEMBER double width() const;
  STANDIN_OBJECTARX_MEMBER double height() const;
  STANDIN_OBJECTARX_MEMBER void setHeight(double height);

 protected:
  AcDbAbstractViewTableRecord() = default;
};

/// A tile of the model tab.
class STANDIN_OBJECTARX_CLASS AcDbViewportTableRecord : public AcDbAbstractViewTableRecord {
 public:
  ACRX_DECLARE_MEMBERS(AcDbViewportTableRecord)

 protected:
  AcDbViewportTableRecord() = default;
};

#endif
