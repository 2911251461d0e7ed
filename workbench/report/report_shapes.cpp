#include "workbench/report/report_shapes.h"

#include "workbench/report/columns.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <tuple>
#include <utility>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

/// The columns of some shapes while they are filled.
class ShapeColumns {
 public:
  void add(const ReportShape& shape) {
    mHandles.push_back(shape.handle);
    mTypes.push_back(typeNumber(shape.type));
    mLines.push_back(static_cast<std::uint32_t>(shape.outline.size()));
    for (const standin::Polyline3& line : shape.outline) {
      mPoints.push_back(static_cast<std::uint32_t>(line.size()));
      for (const AcGePoint3d& p : line) mCoordinates.insert(mCoordinates.end(), {p.x, p.y, p.z});
    }
    addToGroup(shape);
  }

  Json json() const {
    return {{"groups", mGroups},          {"types", mTypeNames},     {"handles", column(mHandles)},
            {"type", column(mTypes)},     {"lines", column(mLines)}, {"points", column(mPoints)},
            {"xyz", column(mCoordinates)}};
  }

 private:
  std::uint8_t typeNumber(const std::string& name) {
    const auto place = std::find(mTypeNames.begin(), mTypeNames.end(), name);
    const auto number = place - mTypeNames.begin();
    if (place == mTypeNames.end()) mTypeNames.push_back(name);
    return static_cast<std::uint8_t>(number);
  }

  void addToGroup(const ReportShape& shape) {
    const bool isSame =
        !mGroups.empty() && mGroups.back()[0] == shape.layer && mGroups.back()[1] == shape.colour;
    if (!isSame) mGroups.push_back(Json::array({shape.layer, shape.colour, 0}));
    mGroups.back()[2] = mGroups.back()[2].get<std::size_t>() + 1;
  }

  Json mGroups = Json::array();
  std::vector<std::string> mTypeNames;
  std::vector<std::uint64_t> mHandles;
  std::vector<std::uint8_t> mTypes;
  std::vector<std::uint32_t> mLines;
  std::vector<std::uint32_t> mPoints;
  std::vector<double> mCoordinates;
};

/// Longest side of the box around a shape; 0 for a point.
double extent(const ReportShape& shape) {
  constexpr double kFar = std::numeric_limits<double>::infinity();
  std::array<double, 3> low{kFar, kFar, kFar};
  std::array<double, 3> high{-kFar, -kFar, -kFar};
  for (const standin::Polyline3& line : shape.outline)
    for (const AcGePoint3d& p : line) {
      const std::array<double, 3> at{p.x, p.y, p.z};
      for (std::size_t i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], at[i]);
        high[i] = std::max(high[i], at[i]);
      }
    }
  double longest = 0;
  for (std::size_t i = 0; i < 3; ++i) longest = std::max(longest, high[i] - low[i]);
  return longest;
}

std::vector<const ReportShape*> largest(const std::vector<ReportShape>& shapes, std::size_t most) {
  std::vector<std::pair<double, const ReportShape*>> bySize;
  bySize.reserve(shapes.size());
  for (const ReportShape& shape : shapes) bySize.emplace_back(extent(shape), &shape);
  // Stable, so that equal runs leave out the same ones.
  std::stable_sort(bySize.begin(), bySize.end(),
                   [](const auto& a, const auto& b) { return a.first > b.first; });
  std::vector<const ReportShape*> kept;
  std::size_t size = 0;
  for (const auto& [ignored, shapeP] : bySize) {
    size += sizeInPage(*shapeP);
    if (size > most) break;
    kept.push_back(shapeP);
  }
  // Shapes of one vector: their places are their order.
  std::sort(kept.begin(), kept.end());
  return kept;
}

}  // namespace

Json shapesJson(const std::vector<const ReportShape*>& shapes) {
  ShapeColumns columns;
  for (const ReportShape* const shapeP : shapes) columns.add(*shapeP);
  return columns.json();
}

std::size_t sizeInPage(const ReportShape& shape) {
  std::size_t bytes = sizeof(std::uint64_t) + sizeof(std::uint8_t) + sizeof(std::uint32_t);
  for (const standin::Polyline3& line : shape.outline)
    bytes += sizeof(std::uint32_t) + line.size() * 3 * sizeof(double);
  return bytes * 4 / 3;
}

std::vector<const ReportShape*> shapesForPage(const std::vector<ReportShape>& shapes, std::size_t most) {
  std::size_t size = 0;
  for (const ReportShape& shape : shapes) size += sizeInPage(shape);
  std::vector<const ReportShape*> chosen;
  if (size > most)
    chosen = largest(shapes, most);
  else
    for (const ReportShape& shape : shapes) chosen.push_back(&shape);
  std::stable_sort(chosen.begin(), chosen.end(), [](const ReportShape* a, const ReportShape* b) {
    return std::tie(a->layer, a->colour) < std::tie(b->layer, b->colour);
  });
  return chosen;
}

}  // namespace workbench
