#include "workbench/running/outputs.h"

#include <nlohmann/json.hpp>

#include <cassert>
#include <charconv>
#include <string_view>
#include <utility>

namespace workbench {
namespace {

constexpr std::size_t kBytesPerRowGuess = 300;
/// As many as a double needs to be read back exactly.
constexpr int kSignificantDigits = 17;

void appendReal(std::string& out, double value) {
  char text[40];
  const auto result =
      // Independent of the locale, and equal on all platforms, so that runs can be compared as text.
      std::to_chars(text, text + sizeof text, value, std::chars_format::general, kSignificantDigits);
  out.append(text, result.ptr);
}

template <typename Triple>
void appendTriple(std::string& out, const Triple& triple, char separator) {
  appendReal(out, triple.x);
  out += separator;
  appendReal(out, triple.y);
  out += separator;
  appendReal(out, triple.z);
}

std::string csvField(const std::string& text) {
  // Quoted only where the format demands it; most names stay readable.
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quotedText = "\"";
  for (const char c : text) quotedText += c == '"' ? "\"\"" : std::string(1, c);
  return quotedText + "\"";
}

void appendPoints(std::string& out, const standin::Polyline3& points) {
  const char* separator = "";
  for (const AcGePoint3d& point : points) {
    out += std::exchange(separator, ";");
    appendTriple(out, point, ' ');
  }
}

/// A column of a table: its name, and what it appends for a row.
template <typename Row>
struct Column {
  const char* name;
  void (*append)(std::string& out, const Row& row);
};

template <std::size_t Axis>
void appendCap(std::string& out, const TrajectoryRow& row) {
  out += std::to_string(row.cap[Axis]);
}

template <auto Part, auto Coordinate>
void appendCoordinate(std::string& out, const TrajectoryRow& row) {
  appendReal(out, row.camera.*Part.*Coordinate);
}

using standin::host::Camera;
using Text = std::string;

/// Adding a column: a row here and its row in docs/outputs.md.
constexpr Column<TrajectoryRow> kTrajectoryColumns[] = {
    {"time_ms", [](Text& out, const TrajectoryRow& row) { out += std::to_string(row.timeMs); }},
    {"kind", [](Text& out, const TrajectoryRow& row) { out += kindName(row.kind); }},
    {"viewport", [](Text& out, const TrajectoryRow& row) { out += std::to_string(row.viewport); }},
    {"cap_x", appendCap<0>},
    {"cap_y", appendCap<1>},
    {"cap_z", appendCap<2>},
    {"cap_rx", appendCap<3>},
    {"cap_ry", appendCap<4>},
    {"cap_rz", appendCap<5>},
    {"px", appendCoordinate<&Camera::position, &AcGePoint3d::x>},
    {"py", appendCoordinate<&Camera::position, &AcGePoint3d::y>},
    {"pz", appendCoordinate<&Camera::position, &AcGePoint3d::z>},
    {"tx", appendCoordinate<&Camera::target, &AcGePoint3d::x>},
    {"ty", appendCoordinate<&Camera::target, &AcGePoint3d::y>},
    {"tz", appendCoordinate<&Camera::target, &AcGePoint3d::z>},
    {"ux", appendCoordinate<&Camera::up, &AcGeVector3d::x>},
    {"uy", appendCoordinate<&Camera::up, &AcGeVector3d::y>},
    {"uz", appendCoordinate<&Camera::up, &AcGeVector3d::z>},
    {"field_width", [](Text& out, const TrajectoryRow& row) { appendReal(out, row.camera.fieldWidth); }},
    {"field_height", [](Text& out, const TrajectoryRow& row) { appendReal(out, row.camera.fieldHeight); }},
    {"projection", [](Text& out, const TrajectoryRow& row) {
       out += row.camera.isPerspective ? "perspective" : "parallel";
     }}};

// The layer is the only field that a user names, so it alone needs quoting.
constexpr Column<EntityState> kEntityColumns[] = {
    {"handle", [](Text& out, const EntityState& entity) { out += handleText(entity.handle); }},
    {"type", [](Text& out, const EntityState& entity) { out += entity.type; }},
    {"layer", [](Text& out, const EntityState& entity) { out += csvField(entity.layer); }},
    {"points", [](Text& out, const EntityState& entity) { appendPoints(out, entity.points); }}};

template <typename Columns>
std::vector<std::string_view> namesOf(const Columns& columns) {
  std::vector<std::string_view> names;
  for (const auto& column : columns) names.emplace_back(column.name);
  return names;
}

template <typename Columns>
std::string headerOf(const Columns& columns) {
  std::string header;
  for (const auto& column : columns) header += (header.empty() ? "" : ",") + std::string(column.name);
  return header + "\n";
}

template <typename Columns, typename Row>
void appendRow(std::string& out, const Columns& columns, const Row& row) {
  const char* separator = "";
  for (const auto& column : columns) {
    out += std::exchange(separator, ",");
    column.append(out, row);
  }
  out += '\n';
}

}  // namespace

const char* kindName(RowKind kind) {
  switch (kind) {
    case RowKind::kStart:
      return "start";
    case RowKind::kPass3d:
      return "pass3d";
    case RowKind::kCommit:
      return "commit";
    case RowKind::kView:
      return "view";
    case RowKind::kPass2d:
      return "pass2d";
  }
  assert(false && "a kind without a name");
  return "";
}

const char* kindName(LineKind kind) {
  switch (kind) {
    case LineKind::kSend:
      return "send";
    case LineKind::kSendActivate:
      return "send-activate";
    case LineKind::kPrint:
      return "print";
    case LineKind::kHost:
      return "host";
    case LineKind::kBox:
      return "box";
    case LineKind::kBeep:
      return "beep";
  }
  assert(false && "a kind without a name");
  return "";
}

std::vector<std::string_view> trajectoryColumns() {
  return namesOf(kTrajectoryColumns);
}

std::vector<std::string_view> entityColumns() {
  return namesOf(kEntityColumns);
}

std::string trajectoryCsv(const std::vector<TrajectoryRow>& rows) {
  std::string text = headerOf(kTrajectoryColumns);
  // A long run may have a million rows; growing the text step by step would copy it again and again.
  text.reserve(text.size() + rows.size() * kBytesPerRowGuess);
  for (const TrajectoryRow& row : rows) appendRow(text, kTrajectoryColumns, row);
  return text;
}

std::string entitiesCsv(const std::vector<EntityState>& entities) {
  std::string text = headerOf(kEntityColumns);
  for (const EntityState& entity : entities) appendRow(text, kEntityColumns, entity);
  return text;
}

std::string commandLineLog(const std::vector<CommandLineEntry>& lines) {
  std::string text;
  for (const CommandLineEntry& line : lines)
    // JSON keeps every text on one line and shows control characters. The text is valid UTF-8, so dump() does
    // not throw.
    text += std::to_string(line.timeMs) + " " + kindName(line.kind) + " " + nlohmann::json(line.text).dump() +
            "\n";
  return text;
}

}  // namespace workbench
