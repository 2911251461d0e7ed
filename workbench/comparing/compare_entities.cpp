#include "workbench/comparing/compare_parts.h"
#include "workbench/comparing/table_reader.h"
#include "workbench/running/outputs.h"
#include "workbench/text_input.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace workbench {
namespace {

using Point = std::array<double, 3>;

/// "x y z;x y z ..."
std::optional<std::vector<Point>> pointsOf(std::string_view text) {
  std::vector<Point> points;
  while (!text.empty()) {
    const std::size_t length = std::min(text.find(';'), text.size());
    const char* at = text.data();
    const char* const end = at + length;
    Point point;
    for (double& value : point) {
      const auto [stop, error] = std::from_chars(at, end, value);
      if (error != std::errc()) return std::nullopt;
      // One blank, which after the last number is the end.
      at = stop == end ? stop : stop + 1;
    }
    if (at != end) return std::nullopt;
    points.push_back(point);
    text.remove_prefix(std::min(length + 1, text.size()));
  }
  return points;
}

struct Entity {
  std::vector<std::string_view> fields;
  std::vector<Point> points;
  bool isFound = false;
};

constexpr std::size_t kHandle = 0;
constexpr std::size_t kType = 1;
constexpr std::size_t kPoints = 3;

/// The row that the table is at. Its fields are those of the file, so the table must outlive them.
Entity entityOf(const TableReader& table) {
  const auto& fields = table.fields();
  if (!parseHex(fields[kHandle])) throw table.error("a handle (hexadecimal)", inQuotes(fields[kHandle]));
  auto points = pointsOf(fields[kPoints]);
  if (!points) throw table.error("points as x y z, separated by \";\"", inQuotes(fields[kPoints]));
  return {fields, std::move(*points)};
}

std::optional<double> distance(const std::vector<Point>& a, const std::vector<Point>& b) {
  if (a.size() != b.size()) return std::nullopt;
  double longest = 0;
  for (std::size_t i = 0; i < a.size(); ++i)
    longest = std::max(longest, std::hypot(a[i][0] - b[i][0], a[i][1] - b[i][1], a[i][2] - b[i][2]));
  return longest;
}

EntityDifference named(const Entity& entity) {
  return {std::string(entity.fields[kHandle]), std::string(entity.fields[kType]), {}, {}};
}

EntityDifference difference(const Entity& a, const Entity& b) {
  EntityDifference result = named(a);
  const auto columns = entityColumns();
  for (std::size_t i = 0; i < columns.size(); ++i)
    if (a.fields[i] != b.fields[i]) result.columns.emplace_back(columns[i]);
  if (a.fields[kPoints] != b.fields[kPoints]) result.moved = distance(a.points, b.points);
  return result;
}

}  // namespace

EntityComparison compareEntities(const std::filesystem::path& a, const std::filesystem::path& b) {
  TableReader tableA(a, entityColumns()), tableB(b, entityColumns());
  std::vector<Entity> entitiesA;
  std::unordered_map<std::string_view, std::size_t> byHandle;
  while (tableA.next()) {
    entitiesA.push_back(entityOf(tableA));
    if (!byHandle.emplace(tableA.fields()[kHandle], entitiesA.size() - 1).second)
      throw tableA.error("a handle that no other row has", inQuotes(tableA.fields()[kHandle]));
  }
  EntityComparison result;
  std::unordered_set<std::string_view> handlesB;
  while (tableB.next()) {
    const Entity entity = entityOf(tableB);
    if (!handlesB.insert(entity.fields[kHandle]).second)
      throw tableB.error("a handle that no other row has", inQuotes(entity.fields[kHandle]));
    const auto found = byHandle.find(entity.fields[kHandle]);
    if (found == byHandle.end()) {
      result.only[1].push_back(named(entity));
      continue;
    }
    Entity& before = entitiesA[found->second];
    before.isFound = true;
    if (before.fields != entity.fields) result.changed.push_back(difference(before, entity));
  }
  for (const Entity& entity : entitiesA)
    if (!entity.isFound) result.only[0].push_back(named(entity));
  result.count = {tableA.rows(), tableB.rows()};
  return result;
}

}  // namespace workbench
