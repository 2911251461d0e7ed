// Circles, arcs and ellipses: one conic each.
#include "conic.h"
#include "entity_base.h"

#include <cmath>

namespace standin {
namespace {

class ConicEntity final : public GeometryEntity {
 public:
  ConicEntity(EntityProperties properties, const char* typeName, const Conic& conic)
      : GeometryEntity(std::move(properties)), mTypeNameP(typeName), mConic(conic) {}

  const char* typeName() const override { return mTypeNameP; }
  Polyline3 points() const override { return {mConic.centre}; }
  std::vector<Polyline3> outline() const override { return {mConic.chords()}; }

 protected:
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    // An empty box first: the caller's may hold anything.
    extents = {};
    mConic.addTo(extents);
    return Acad::eOk;
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    mConic.transformBy(transform);
    return Acad::eOk;
  }

 private:
  const char* mTypeNameP;
  Conic mConic;
};

/// Any unit vector perpendicular to the unit vector.
AcGeVector3d perpendicularTo(const AcGeVector3d& unit) {
  // The axis that is farther from it: the product with a nearly parallel one would be rounding errors.
  const AcGeVector3d other = std::abs(unit.x) < 0.5 ? AcGeVector3d(1, 0, 0) : AcGeVector3d(0, 1, 0);
  return unit.crossProduct(other).normalize();
}

}  // namespace

std::unique_ptr<DrawnEntity> makeCircle(EntityProperties properties, const AcGePoint3d& centre,
                                        const AcGeVector3d& normal, double radius) {
  // Where a circle begins is of no importance, so any direction in its plane will do.
  const AcGeVector3d xAxis = perpendicularTo(normal);
  const Conic conic{centre, xAxis * radius, normal.crossProduct(xAxis) * radius, 0, kTwoPi};
  return std::make_unique<ConicEntity>(std::move(properties), "CIRCLE", conic);
}

std::unique_ptr<DrawnEntity> makeArc(EntityProperties properties, const AcGePoint3d& centre,
                                     const AcGeVector3d& normal, const AcGeVector3d& xAxis, double radius,
                                     double startAngle, double endAngle) {
  const Conic conic =
      makeConic(centre, xAxis * radius, normal.crossProduct(xAxis) * radius, startAngle, endAngle);
  return std::make_unique<ConicEntity>(std::move(properties), "ARC", conic);
}

std::unique_ptr<DrawnEntity> makeEllipse(EntityProperties properties, const AcGePoint3d& centre,
                                         const AcGeVector3d& normal, const AcGeVector3d& majorAxis,
                                         double ratio, double startParameter, double endParameter) {
  // Start and end are parameters of the ellipse, not angles: they differ when the ratio is not 1.
  const Conic conic =
      makeConic(centre, majorAxis, normal.crossProduct(majorAxis) * ratio, startParameter, endParameter);
  return std::make_unique<ConicEntity>(std::move(properties), "ELLIPSE", conic);
}

}  // namespace standin
