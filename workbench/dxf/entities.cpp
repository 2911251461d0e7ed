#include "workbench/dxf/entities.h"

#include "workbench/dxf/frame.h"

#include <array>
#include <string_view>

namespace workbench::dxf {
namespace {

constexpr double kTwoPi = 2 * 3.14159265358979323846;
constexpr long long kMostInt16 = 32767;
// Group 90 is a 32-bit integer, group 70 a 16-bit one.
constexpr long long kMostVertices = 2147483647;
constexpr long long kClosedFlag = 1;
constexpr AcGeVector3d kWorldZ{0, 0, 1};

double radius(const DxfRecord& record) {
  const double value = record.real(40);
  // Zero is allowed: degenerate circles occur in real drawings and are drawn as a point.
  if (value < 0) throw record.error(*record.find(40), "a radius of 0 or more");
  return value;
}

/// A vertex begins with its group 10; the groups 20 and 42 that follow are its own.
std::vector<standin::PolylineVertex> readLightVertices(const DxfRecord& record, double elevation) {
  std::vector<standin::PolylineVertex> vertices;
  bool isComplete = true;
  for (const DxfGroup& group : record) {
    if (group.code == 10) {
      if (!isComplete) throw record.error(group, "group 20 of the vertex before");
      // The vertices have no z of their own; group 38 gives one elevation for all of them.
      vertices.push_back({{record.realOf(group), 0, elevation}, 0});
      isComplete = false;
      // Groups are read in file order and not looked up by code, because every vertex repeats the same codes.
    } else if (group.code == 20 && !isComplete) {
      vertices.back().at.y = record.realOf(group);
      isComplete = true;
      // A missing bulge means a straight segment. Before the first vertex, code 42 belongs to nothing.
    } else if (group.code == 42 && !vertices.empty()) {
      vertices.back().bulge = record.realOf(group);
    }
  }
  if (!isComplete) throw record.error("group 20 of the last vertex", "none up to the next record");
  return vertices;
}

}  // namespace

EntityPtr makeLine(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  // Lines and points are in world coordinates even when they have an extrusion direction, which only gives
  // them thickness.
  return standin::makeLine(entity.properties, record.point(10), record.point(11));
}

EntityPtr makePoint(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  return standin::makePoint(entity.properties, record.point(10));
}

EntityPtr makeCircle(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  // The centre is in the object frame, unlike that of an ellipse.
  return standin::makeCircle(entity.properties, frame.toWorld(record.point(10)), frame.z, radius(record));
}

EntityPtr makeArc(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  // Arcs give angles in degrees, ellipses give parameters in radians. The entity runs counter-clockwise from
  // start to end, whatever the turns between the two numbers, and equal ones are a full turn.
  return standin::makeArc(entity.properties, frame.toWorld(record.point(10)), frame.z, frame.x,
                          radius(record), radians(record.real(50)), radians(record.real(51)));
}

EntityPtr makeEllipse(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const AcGeVector3d normal = record.direction(210, kWorldZ);
  // The parameter runs from 0 at the major axis. It is an angle only on a circle, so it is not converted from
  // degrees.
  const double start = record.real(41, 0);
  const double end = record.real(42, kTwoPi);
  // Group 11 is the end of the major axis relative to the centre, in world coordinates as the centre is.
  const AcGeVector3d majorAxis = record.point(11) - AcGePoint3d::kOrigin;
  return standin::makeEllipse(entity.properties, record.point(10), normal, majorAxis, record.real(40), start,
                              end);
}

EntityPtr makeFace(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const AcGePoint3d third = record.point(12);
  // A triangle repeats its third corner, and some programs leave group 13 out.
  const AcGePoint3d fourth = record.find(13) == nullptr ? third : record.point(13);
  return standin::makeFace(entity.properties, {record.point(10), record.point(11), third, fourth});
}

EntityPtr makeLightPolyline(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  auto points = readLightVertices(record, record.real(38, 0));
  const auto count = static_cast<long long>(points.size());
  if (record.integer(90, count, 0, kMostVertices) != count)
    throw record.error(*record.find(90),
                       "the number of the vertices that follow (" + std::to_string(count) + ")");
  // Bulges need no conversion: they turn about the frame's z axis, which is passed on as the normal.
  for (standin::PolylineVertex& point : points) point.at = frame.toWorld(point.at);
  const bool isClosed = (record.integer(70, 0, -kMostInt16 - 1, kMostInt16) & kClosedFlag) != 0;
  return standin::makePolyline(entity.properties, "LWPOLYLINE", points, frame.z, isClosed);
}

}  // namespace workbench::dxf
