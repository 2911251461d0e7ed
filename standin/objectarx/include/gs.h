/// A viewport's graphics view. Main thread only.
#ifndef STANDIN_GS_H
#define STANDIN_GS_H

#include "reserved_slots.h"
#include "standin_objectarx_api.h"

#include "gepnt3d.h"
#include "gevec3d.h"

/// Owned by the host. Lengths in drawing units, world frame.
class STANDIN_OBJECTARX_CLASS AcGsView {
 protected:
  virtual ~AcGsView() = default;

 public:
  enum Projection { kParallel = 0, kPerspective = 1 };

  STANDIN_SLOTS_4(AcGsView, 1, 2, 3, 4)
  STANDIN_SLOTS_5(AcGsView, 5, 6, 7, 8, 9)
  STANDIN_SLOT(AcGsView, 10)
  /// Slot 11.
  virtual void setView(const AcGePoint3d& position, const AcGePoint3d& target, const AcGeVector3d& up,
                       double fieldWidth, double fieldHeight, Projection projection = kParallel) = 0;
  /// Slots 12 to 17.
  virtual AcGePoint3d position() const = 0;
  virtual AcGePoint3d target() const = 0;
  /// As it was given, not made perpendicular to the line of sight.
  virtual AcGeVector3d upVector() const = 0;
  virtual bool isPerspective() const = 0;
  virtual double fieldWidth() const = 0;
  virtual double fieldHeight() const = 0;
  STANDIN_SLOTS_2(AcGsView, 18, 19)
  STANDIN_SLOTS_10(AcGsView, 2)
  STANDIN_SLOTS_5(AcGsView, 30, 31, 32, 33, 34)
  STANDIN_SLOTS_3(AcGsView, 35, 36, 37)
  /// Slot 38.
  virtual bool isValid() const = 0;
  /// Slot 39. Draws.
  virtual void update() = 0;
  STANDIN_SLOTS_10(AcGsView, 4)
  STANDIN_SLOTS_5(AcGsView, 50, 51, 52, 53, 54)
  STANDIN_SLOTS_4(AcGsView, 55, 56, 57, 58)
  /// Slot 59. Divides the field's width and height by `factor`.
  virtual void zoom(double factor) = 0;
  STANDIN_SLOTS_10(AcGsView, 6)
  STANDIN_SLOTS_10(AcGsView, 7)
  STANDIN_SLOTS_5(AcGsView, 80, 81, 82, 83, 84)
};

#endif
