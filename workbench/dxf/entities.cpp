#include "workbench/dxf/entities.h"

#include "workbench/dxf/frame.h"

#include <array>
#include <string_view>

namespace workbench::dxf {
namespace {

constexpr double kTwoPi = 2 * 3.14159265358979323846;
constexpr long long kMostInt16 = 32767;
constexpr long long kMostVertices = 2147483647;
constexpr long long kClosedFlag = 1;
constexpr AcGeVector3d kWorldZ{0, 0, 1};

/// Arcs run counter-clockwise, so the end's angle is above the start's.
double endAfter(double start, double end) {
  return end > start ? end : end + kTwoPi;
}

double radius(const DxfRecord& record) {
  const double value = record.real(40);
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
      vertices.push_back({{record.realOf(group), 0, elevation}, 0});
      isComplete = false;
    } else if (group.code == 20 && !isComplete) {
      vertices.back().at.y = record.realOf(group);
      isComplete = true;
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
  return standin::makeLine(entity.properties, record.point(10), record.point(11));
}

EntityPtr makePoint(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  return standin::makePoint(entity.properties, record.point(10));
}

EntityPtr makeCircle(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  return standin::makeCircle(entity.properties, frame.toWorld(record.point(10)), frame.z, radius(record));
}

EntityPtr makeArc(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const DxfFrame frame = dxfFrame(record.direction(210, kWorldZ));
  const double start = radians(record.real(50));
  return standin::makeArc(entity.properties, frame.toWorld(record.point(10)), frame.z, frame.x,
                          radius(record), start, endAfter(start, radians(record.real(51))));
}

EntityPtr makeEllipse(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const AcGeVector3d normal = record.direction(210, kWorldZ);
  const double start = record.real(41, 0);
  const double end = endAfter(start, record.real(42, kTwoPi));
  const AcGeVector3d majorAxis = record.point(11) - AcGePoint3d::kOrigin;
  return standin::makeEllipse(entity.properties, record.point(10), normal, majorAxis, record.real(40), start,
                              end);
}

EntityPtr makeFace(const DxfEntity& entity, DxfInserts&) {
  const DxfRecord& record = entity.record;
  const AcGePoint3d third = record.point(12);
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
  for (standin::PolylineVertex& point : points) point.at = frame.toWorld(point.at);
  const bool isClosed = (record.integer(70, 0, -kMostInt16 - 1, kMostInt16) & kClosedFlag) != 0;
  return standin::makePolyline(entity.properties, "LWPOLYLINE", points, frame.z, isClosed);
}

}  // namespace workbench::dxf
