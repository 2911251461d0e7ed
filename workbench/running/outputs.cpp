#include "workbench/running/outputs.h"

#include "workbench/input_error.h"

#include <nlohmann/json.hpp>

#include <charconv>
#include <fstream>

namespace workbench {
namespace {

constexpr std::string_view kTrajectoryHeader =
    "time_ms,kind,viewport,cap_x,cap_y,cap_z,cap_rx,cap_ry,cap_rz,px,py,pz,tx,ty,tz,ux,uy,uz,"
    "field_width,field_height,projection\n";
constexpr std::size_t kBytesPerRowGuess = 300;
constexpr int kSignificantDigits = 17;

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
  return "";
}

void appendReal(std::string& out, double value) {
  char text[40];
  const auto result =
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

void appendRow(std::string& out, const TrajectoryRow& row) {
  out += std::to_string(row.timeMs) + "," + kindName(row.kind) + "," + std::to_string(row.viewport) + ",";
  for (const std::int16_t value : row.cap) out += std::to_string(value) + ",";
  appendTriple(out, row.camera.position, ',');
  out += ',';
  appendTriple(out, row.camera.target, ',');
  out += ',';
  appendTriple(out, row.camera.up, ',');
  out += ',';
  appendReal(out, row.camera.fieldWidth);
  out += ',';
  appendReal(out, row.camera.fieldHeight);
  out += row.camera.isPerspective ? ",perspective\n" : ",parallel\n";
}

std::string csvField(const std::string& text) {
  if (text.find_first_of(",\"\r\n") == std::string::npos) return text;
  std::string quotedText = "\"";
  for (const char c : text) quotedText += c == '"' ? "\"\"" : std::string(1, c);
  return quotedText + "\"";
}

std::map<std::string, std::size_t> countByType(const std::vector<EntityState>& entities) {
  std::map<std::string, std::size_t> counts;
  for (const EntityState& entity : entities) ++counts[entity.type];
  return counts;
}

std::vector<std::string> handleTexts(const std::set<std::uint64_t>& handles) {
  std::vector<std::string> texts;
  texts.reserve(handles.size());
  for (const std::uint64_t handle : handles) texts.push_back(handleText(handle));
  return texts;
}

std::string listed(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : ", ") + word;
  return text;
}

std::string countList(const std::map<std::string, std::size_t>& counts) {
  std::string text;
  for (const auto& [type, count] : counts)
    text += (text.empty() ? "" : ", ") + std::to_string(count) + " " + type;
  return text.empty() ? "none" : text;
}

}  // namespace

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
  return "";
}

std::string trajectoryCsv(const std::vector<TrajectoryRow>& rows) {
  std::string text;
  text.reserve(kTrajectoryHeader.size() + rows.size() * kBytesPerRowGuess);
  text += kTrajectoryHeader;
  for (const TrajectoryRow& row : rows) appendRow(text, row);
  return text;
}

std::string entitiesCsv(const std::vector<EntityState>& entities) {
  std::string text = "handle,type,layer,points\n";
  for (const EntityState& entity : entities) {
    text += handleText(entity.handle) + "," + entity.type + "," + csvField(entity.layer) + ",";
    for (std::size_t i = 0; i < entity.points.size(); ++i) {
      if (i != 0) text += ';';
      appendTriple(text, entity.points[i], ' ');
    }
    text += '\n';
  }
  return text;
}

std::string commandLineLog(const std::vector<CommandLineEntry>& lines) {
  std::string text;
  for (const CommandLineEntry& line : lines)
    text += std::to_string(line.timeMs) + " " + kindName(line.kind) + " " + nlohmann::json(line.text).dump() +
            "\n";
  return text;
}

std::string summaryJson(const RunResult& result, const RunNames& names) {
  const standin::host::Report& host = result.host;
  nlohmann::ordered_json json;
  json["drawing"] = names.drawing;
  json["session"] = names.session;
  json["end_ms"] = result.endMs;
  json["passes_3d"] = host.updates;
  json["passes_2d"] = host.paperUpdates;
  json["commits"] = host.commits;
  json["texts_sent"] = host.textsSent;
  json["prints"] = host.modulePrints;
  json["locks"] = host.locks;
  json["unlocks"] = host.unlocks;
  json["lock_depth_at_end"] = host.lockDepth;
  json["open_objects"] = host.openObjects;
  json["selection_sets_not_freed"] = host.selectionSetsAlive;
  json["calls_off_main_thread"] = host.callsOffMainThread;
  json["reactors_left"] = host.reactors;
  json["commands_left"] = host.commandsRegistered;
  json["entities"] = countByType(result.entities);
  json["entities_not_understood"] = result.notUnderstood;
  json["handles_not_found"] = handleTexts(result.recording.handlesNotFound);
  json["device_events_delivered"] = result.eventsDelivered;
  json["device_events_not_fetched"] = result.eventsNotFetched;
  json["host_breaches"] = host.breaches;
  json["host_breaches_in_all"] = host.breachesInAll;
  json["problems"] = result.problems;
  json["clean"] = result.isClean();
  return json.dump(2, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
}

std::vector<std::pair<std::string, std::string>> summaryRows(const RunResult& result) {
  const standin::host::Report& host = result.host;
  std::vector<std::pair<std::string, std::string>> rows = {
      {"session", std::to_string(result.endMs) + " ms"},
      {"passes in 3D", std::to_string(host.updates)},
      {"passes in 2D", std::to_string(host.paperUpdates)},
      {"views committed", std::to_string(host.commits)},
      {"texts sent", std::to_string(host.textsSent)},
      {"prints", std::to_string(host.modulePrints)},
      {"document locks",
       std::to_string(host.locks) + " taken, " + std::to_string(host.unlocks) + " released"},
      {"device events", std::to_string(result.eventsDelivered)},
      {"entities", countList(countByType(result.entities))},
      {"not understood", countList(result.notUnderstood)}};
  if (const auto handles = handleTexts(result.recording.handlesNotFound); !handles.empty())
    rows.emplace_back("handles not found", listed(handles));
  for (const std::string& problem : result.problems) rows.emplace_back("problem", problem);
  rows.emplace_back("clean", result.isClean() ? "yes" : "no");
  return rows;
}

void writeFile(const std::filesystem::path& file, const std::string& text) {
  std::ofstream stream(file, std::ios::binary | std::ios::trunc);
  stream.write(text.data(), static_cast<std::streamsize>(text.size()));
  stream.close();
  if (!stream) throw InputError({file.string()}, "a file that can be written", "one that cannot");
}

}  // namespace workbench
