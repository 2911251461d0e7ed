/// A viewport's graphics view. Main thread only.
#ifndef STANDIN_GS_H
#define STANDIN_GS_H

#include "standin_objectarx_api.h"

#include "gepnt3d.h"
#include "gevec3d.h"

/// Owned by the host. Lengths in drawing units, world frame.
class STANDIN_OBJECTARX_API AcGsView {
 public:
  enum Projection { kParallel = 0, kPerspective = 1 };

  virtual AcGePoint3d position() const = 0;
  virtual AcGePoint3d target() const = 0;
  /// As it was given, not made perpendicular to the line of sight.
  virtual AcGeVector3d upVector() const = 0;
  virtual bool isPerspective() const = 0;
  virtual double fieldWidth() const = 0;
  virtual double fieldHeight() const = 0;
  virtual void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up,
                       double fieldWidth, double fieldHeight, Projection projection = kParallel) = 0;
  /// Divides the field's width and height by `factor`.
  virtual void zoom(double factor) = 0;
  virtual bool isValid() const = 0;
  /// Draws.
  virtual void update() = 0;

 protected:
  virtual ~AcGsView();
};

#endif
