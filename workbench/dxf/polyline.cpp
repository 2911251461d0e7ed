#include "workbench/dxf/entities.h"
#include "workbench/dxf/frame.h"

#include <algorithm>
#include <cstdlib>

namespace workbench::dxf {
namespace {

using standin::EntityProperties;

constexpr long long kMostInt16 = 32767;
// Extrusion direction of an entity that gives none.
constexpr AcGeVector3d kWorldZ{0, 0, 1};

// Bits of group 70 of a POLYLINE. One record type is used for four kinds of entity; the bits distinguish
// them.
constexpr long long kClosed = 1;
constexpr long long kSplineFitted = 4;
constexpr long long k3d = 8;
constexpr long long kMesh = 16;
constexpr long long kMeshClosedN = 32;
constexpr long long kPolyface = 64;

// Bits of group 70 of a VERTEX.
constexpr long long kSplineFrame = 16;
constexpr long long kPolygonVertex = 64;
constexpr long long kPolyfaceVertex = 128;

long long flagsOf(const DxfRecord& record) {
  return record.integer(70, 0, -kMostInt16 - 1, kMostInt16);
}

// A fitted polyline lists the control points next to the points of the curve. Drawing both would join them in
// a zigzag.
std::vector<DxfRecord> withoutSplineFrame(const std::vector<DxfRecord>& vertices) {
  std::vector<DxfRecord> kept;
  std::copy_if(vertices.begin(), vertices.end(), std::back_inserter(kept),
               [](const DxfRecord& vertex) { return (flagsOf(vertex) & kSplineFrame) == 0; });
  return kept;
}

EntityPtr makePlanar(const DxfRecord& record, const std::vector<DxfRecord>& vertices,
                     const EntityProperties& properties, bool isClosed) {
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  // The elevation is z of the polyline's own point, whose x and y are always 0. The z of its vertices is
  // ignored.
  const double elevation = record.real(30, 0);
  std::vector<standin::PolylineVertex> points;
  for (const DxfRecord& vertex : vertices) {
    const AcGePoint3d at = vertex.point(10);
    points.push_back({frame.toWorld({at.x, at.y, elevation}), vertex.real(42, 0)});
  }
  return standin::makePolyline(properties, "POLYLINE", points, frame.z, isClosed);
}

EntityPtr make3d(const std::vector<DxfRecord>& vertices, const EntityProperties& properties, bool isClosed) {
  std::vector<standin::PolylineVertex> points;
  points.reserve(vertices.size());
  // World coordinates and straight segments: 3D polylines have neither an object frame nor bulges.
  for (const DxfRecord& vertex : vertices) points.push_back({vertex.point(10), 0});
  return standin::makePolyline(properties, "POLYLINE", points, kWorldZ, isClosed);
}

EntityPtr makeMesh(const DxfRecord& record, const std::vector<DxfRecord>& vertices,
                   const EntityProperties& properties, long long flags) {
  const bool isFitted = (flags & kSplineFitted) != 0;
  // A fitted mesh counts the points of its surface in groups 73 and 74; 71 and 72 then count the control
  // points, which have been removed.
  const auto m = static_cast<std::size_t>(record.integer(isFitted ? 73 : 71, 0, 0, kMostInt16));
  const auto n = static_cast<std::size_t>(record.integer(isFitted ? 74 : 72, 0, 0, kMostInt16));
  if (m * n != vertices.size())
    throw record.error(std::to_string(m) + " x " + std::to_string(n) + " mesh vertices",
                       std::to_string(vertices.size()));
  std::vector<AcGePoint3d> points;
  points.reserve(vertices.size());
  for (const DxfRecord& vertex : vertices) points.push_back(vertex.point(10));
  // Closed in M is the same bit as a closed polyline, closed in N has one of its own.
  return standin::makeMesh(properties, std::move(points), m, n, (flags & kClosed) != 0,
                           (flags & kMeshClosedN) != 0);
}

bool isFaceRecord(const DxfRecord& vertex) {
  const long long flags = flagsOf(vertex);
  // A point of the face mesh has both bits, a face only the first.
  return (flags & kPolyfaceVertex) != 0 && (flags & kPolygonVertex) == 0;
}

/// Indices of a face: 1-based, negative where the edge is not to be seen, 0 where there is none.
std::vector<std::size_t> readFace(const DxfRecord& vertex, std::size_t pointCount) {
  std::vector<std::size_t> face;
  for (int code = 71; code <= 74; ++code) {
    // The sign only hides an edge, and the stand-in draws all edges.
    const long long index = std::abs(vertex.integer(code, 0, -kMostInt16, kMostInt16));
    if (index == 0) continue;
    if (index > static_cast<long long>(pointCount))
      throw vertex.error(*vertex.find(code),
                         "the index of one of the " + std::to_string(pointCount) + " vertices");
    face.push_back(static_cast<std::size_t>(index - 1));
  }
  return face;
}

EntityPtr makePolyface(const std::vector<DxfRecord>& vertices, const EntityProperties& properties) {
  std::vector<AcGePoint3d> points;
  points.reserve(vertices.size());
  for (const DxfRecord& vertex : vertices)
    // Points first, in their order: the faces refer to them by number, and the format does not say that faces
    // come last.
    if (!isFaceRecord(vertex)) points.push_back(vertex.point(10));
  std::vector<std::vector<std::size_t>> faces;
  for (const DxfRecord& vertex : vertices) {
    if (!isFaceRecord(vertex)) continue;
    auto face = readFace(vertex, points.size());
    // Faces of one or two indices are single points and edges, which nothing draws.
    if (face.size() >= 3) faces.push_back(std::move(face));
  }
  return standin::makePolyface(properties, std::move(points), std::move(faces));
}

}  // namespace

EntityPtr makePolyline(const DxfEntity& entity, DxfInserts&) {
  const auto& [record, vertices, container, properties] = entity;
  const long long flags = flagsOf(record);
  const bool isClosed = (flags & kClosed) != 0;
  // Before the spline frame is removed: a face mesh is never fitted, and its faces count on every vertex.
  if ((flags & kPolyface) != 0) return makePolyface(vertices, properties);
  const auto drawn = (flags & kSplineFitted) != 0 ? withoutSplineFrame(vertices) : vertices;
  // The mesh bit decides where a program has set the 3D bit as well.
  if ((flags & kMesh) != 0) return makeMesh(record, drawn, properties, flags);
  if ((flags & k3d) != 0) return make3d(drawn, properties, isClosed);
  return makePlanar(record, drawn, properties, isClosed);
}

}  // namespace workbench::dxf
