// Points, faces and meshes: points, and wires drawn between them.
#include "entity_base.h"

#include <cassert>
#include <stdexcept>

namespace standin {
namespace {

using Wire = std::vector<std::size_t>;  ///< indices of points, in drawing order

class WireEntity final : public GeometryEntity {
 public:
  WireEntity(EntityProperties properties, const char* typeName, Polyline3 points, std::vector<Wire> wires)
      : GeometryEntity(std::move(properties)),
        mTypeNameP(typeName),
        mPoints(std::move(points)),
        mWires(std::move(wires)) {}

  const char* typeName() const override { return mTypeNameP; }
  Polyline3 points() const override { return mPoints; }
  std::vector<Polyline3> outline() const override {
    std::vector<Polyline3> result;
    for (const Wire& wire : mWires) {
      Polyline3& line = result.emplace_back();
      for (const std::size_t index : wire) {
        assert(index < mPoints.size() && "a wire joins points of its entity");
        line.push_back(mPoints[index]);
      }
    }
    return result;
  }

 protected:
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    return boxOf({mPoints}, extents);
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    for (AcGePoint3d& point : mPoints) point = transform * point;
    return Acad::eOk;
  }

 private:
  const char* mTypeNameP;
  Polyline3 mPoints;
  std::vector<Wire> mWires;
};

/// `count` points, `step` apart in the list, from `first`; back to the first when closed.
Wire meshWire(std::size_t first, std::size_t step, std::size_t count, bool isClosed) {
  Wire wire;
  for (std::size_t i = 0; i < count; ++i) wire.push_back(first + i * step);
  // Two points and back would draw one line twice.
  if (isClosed && count > 2) wire.push_back(first);
  return wire;
}

}  // namespace

Acad::ErrorStatus boxOf(const std::vector<Polyline3>& wires, AcDbExtents& extents) {
  // A box of its own: the caller's stays untouched when there are no points.
  AcDbExtents box;
  bool isEmpty = true;
  for (const Polyline3& wire : wires)
    for (const AcGePoint3d& point : wire) {
      box.addPoint(point);
      isEmpty = false;
    }
  if (isEmpty) return Acad::eNullExtents;
  extents = box;
  return Acad::eOk;
}

std::unique_ptr<DrawnEntity> makePoint(EntityProperties properties, const AcGePoint3d& at) {
  return std::make_unique<WireEntity>(std::move(properties), "POINT", Polyline3{at}, std::vector<Wire>{{0}});
}

std::unique_ptr<DrawnEntity> makeFace(EntityProperties properties,
                                      const std::array<AcGePoint3d, 4>& corners) {
  // A triangle has its third corner twice in the file: a side of no length does no harm.
  return std::make_unique<WireEntity>(std::move(properties), "3DFACE",
                                      Polyline3(corners.begin(), corners.end()),
                                      std::vector<Wire>{{0, 1, 2, 3, 0}});
}

std::unique_ptr<DrawnEntity> makeMesh(EntityProperties properties, std::vector<AcGePoint3d> vertices,
                                      std::size_t m, std::size_t n, bool isClosedM, bool isClosedN) {
  if (vertices.size() != m * n) throw std::invalid_argument("a mesh needs m times n vertices");
  std::vector<Wire> wires;
  // Vertices are row by row, so neighbours in a row are 1 apart and those in a column n apart.
  for (std::size_t row = 0; row < m; ++row) wires.push_back(meshWire(row * n, 1, n, isClosedN));
  for (std::size_t column = 0; column < n; ++column) wires.push_back(meshWire(column, n, m, isClosedM));
  return std::make_unique<WireEntity>(std::move(properties), "POLYLINE", std::move(vertices),
                                      std::move(wires));
}

std::unique_ptr<DrawnEntity> makePolyface(EntityProperties properties, std::vector<AcGePoint3d> vertices,
                                          std::vector<std::vector<std::size_t>> faces) {
  for (Wire& face : faces) {
    if (face.empty()) throw std::invalid_argument("a face needs vertices");
    for (const std::size_t index : face)
      // Checked once here: outline() uses the indices unchecked.
      if (index >= vertices.size()) throw std::invalid_argument("a face names a vertex that is not there");
    face.push_back(face.front());
  }
  return std::make_unique<WireEntity>(std::move(properties), "POLYLINE", std::move(vertices),
                                      std::move(faces));
}

}  // namespace standin
