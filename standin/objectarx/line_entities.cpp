// Lines and polylines.
#include "conic.h"
#include "entity_base.h"
#include "operation.h"

#include "dbents.h"

namespace standin {
namespace {

using host::Call;
using host::ObjectAccess;
using host::Operation;
using host::Result;

const Operation kGetStart("AcDbLine::getStartPoint", Result::kTellsFailure);
const Operation kGetEnd("AcDbLine::getEndPoint", Result::kTellsFailure);
const Operation kStart("AcDbLine::startPoint", Result::kTellsNothing);
const Operation kEnd("AcDbLine::endPoint", Result::kTellsNothing);

/// Every AcDbLine is one of these, which the casts at the end of the file rely on.
class LineEntity final : public AcDbLine, public DrawnEntity, public EntityGeometry {
 public:
  LineEntity(EntityProperties properties, const AcGePoint3d& start, const AcGePoint3d& end)
      : DrawnEntity(std::move(properties)), mStart(start), mEnd(end) {}

  Acad::ErrorStatus getStartPoint(AcGePoint3d& start) const override {
    return read(kGetStart, mStart, start);
  }
  Acad::ErrorStatus getEndPoint(AcGePoint3d& end) const override { return read(kGetEnd, mEnd, end); }

  /// A read of a line that is not open is carried out all the same, as the host does, and is counted.
  AcGePoint3d readAnyway(const Operation& operation) const {
    const Call call(operation);
    if (!ObjectAccess::isOpen(*this)) host::breach(operation, "called for an object that is not open");
    return &operation == &kStart ? mStart : mEnd;
  }

  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    extents = {};
    extents.addPoint(mStart);
    extents.addPoint(mEnd);
    return Acad::eOk;
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    mStart = transform * mStart;
    mEnd = transform * mEnd;
    return Acad::eOk;
  }

  AcDbEntity& entity() override { return *this; }
  const char* typeName() const override { return "LINE"; }
  Polyline3 points() const override { return {mStart, mEnd}; }
  std::vector<Polyline3> outline() const override { return {{mStart, mEnd}}; }

 private:
  Acad::ErrorStatus read(const Operation& operation, const AcGePoint3d& from, AcGePoint3d& into) const {
    const Call call(operation);
    if (call.isToFail() || !ObjectAccess::isOpen(*this)) return Acad::eNotOpenForRead;
    into = from;
    return Acad::eOk;
  }

  AcGePoint3d mStart;
  AcGePoint3d mEnd;
};

class PolylineEntity final : public GeometryEntity {
 public:
  PolylineEntity(EntityProperties properties, const char* typeName,
                 const std::vector<PolylineVertex>& vertices, const AcGeVector3d& normal, bool isClosed)
      : GeometryEntity(std::move(properties)), mTypeNameP(typeName), mIsClosed(isClosed) {
    for (const PolylineVertex& vertex : vertices) mVertices.push_back(vertex.at);
    for (std::size_t i = 0; i < segmentCount(); ++i) {
      // A straight segment: the formula of the arc divides by the bulge.
      if (vertices[i].bulge == 0) continue;
      mArcs.emplace(i, bulgedSegment(mVertices[i], next(i), vertices[i].bulge, normal));
    }
  }

  const char* typeName() const override { return mTypeNameP; }
  Polyline3 points() const override { return mVertices; }

  std::vector<Polyline3> outline() const override {
    if (mVertices.empty()) return {};
    Polyline3 result{mVertices.front()};
    for (std::size_t i = 0; i < segmentCount(); ++i) {
      if (const auto arc = mArcs.find(i); arc != mArcs.end()) {
        const Polyline3 chords = arc->second.chords();
        // Without the ends: the vertices themselves are exact, and the first is there already.
        result.insert(result.end(), chords.begin() + 1, chords.end() - 1);
      }
      result.push_back(next(i));
    }
    return {result};
  }

 protected:
  Acad::ErrorStatus subGetGeomExtents(AcDbExtents& extents) const override {
    if (mVertices.empty()) return Acad::eNullExtents;
    extents = {};
    for (const AcGePoint3d& vertex : mVertices) extents.addPoint(vertex);
    // An arc can reach beyond its vertices.
    for (const auto& [index, arc] : mArcs) arc.addTo(extents);
    return Acad::eOk;
  }
  Acad::ErrorStatus subTransformBy(const AcGeMatrix3d& transform) override {
    for (AcGePoint3d& vertex : mVertices) vertex = transform * vertex;
    for (auto& [index, arc] : mArcs) arc.transformBy(transform);
    return Acad::eOk;
  }

 private:
  std::size_t segmentCount() const {
    if (mVertices.size() < 2) return 0;
    // The last vertex of a closed polyline has a segment back to the first, and the bulge of it.
    return mIsClosed ? mVertices.size() : mVertices.size() - 1;
  }
  const AcGePoint3d& next(std::size_t i) const { return mVertices[(i + 1) % mVertices.size()]; }

  const char* mTypeNameP;
  bool mIsClosed;
  Polyline3 mVertices;
  std::map<std::size_t, Conic> mArcs;  ///< the segments that are not straight, by number
};

}  // namespace

std::unique_ptr<DrawnEntity> makeLine(EntityProperties properties, const AcGePoint3d& start,
                                      const AcGePoint3d& end) {
  return std::make_unique<LineEntity>(std::move(properties), start, end);
}

std::unique_ptr<DrawnEntity> makePolyline(EntityProperties properties, const char* typeName,
                                          const std::vector<PolylineVertex>& vertices,
                                          const AcGeVector3d& normal, bool isClosed) {
  return std::make_unique<PolylineEntity>(std::move(properties), typeName, vertices, normal, isClosed);
}

}  // namespace standin

using namespace standin;

AcGePoint3d AcDbLine::startPoint() const {
  return static_cast<const LineEntity*>(this)->readAnyway(kStart);
}

AcGePoint3d AcDbLine::endPoint() const {
  return static_cast<const LineEntity*>(this)->readAnyway(kEnd);
}
