#include "workbench/running/summary.h"

#include "workbench/running/recording.h"

#include <nlohmann/json.hpp>

#include <map>
#include <set>

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;
using Counts = std::map<std::string, std::size_t>;
using Texts = std::vector<std::string>;

Counts countByType(const std::vector<EntityState>& entities) {
  Counts counts;
  for (const EntityState& entity : entities) ++counts[entity.type];
  return counts;
}

Texts handleTexts(const std::set<std::uint64_t>& handles) {
  Texts texts;
  texts.reserve(handles.size());
  for (const std::uint64_t handle : handles) texts.push_back(handleText(handle));
  return texts;
}

Json breachesJson(const std::vector<Breach>& breaches) {
  Json json = Json::array();
  for (const Breach& breach : breaches)
    json.push_back({{"breach", breach.text}, {"count", breach.count}, {"first_ms", breach.firstMs}});
  return json;
}

// Values as people read them. An empty list leaves the row out; several texts make as many rows.

Texts plain(const Json& value) {
  return {value.dump()};
}

Texts unlessZero(const Json& value) {
  return value == 0 ? Texts() : plain(value);
}

Texts milliseconds(const Json& value) {
  return {value.dump() + " ms"};
}

Texts countList(const Json& counts) {
  std::string text;
  for (const auto& [type, count] : counts.items())
    text += (text.empty() ? "" : ", ") + count.dump() + " " + type;
  return {text.empty() ? "none" : text};
}

Texts listed(const Json& words) {
  if (words.empty()) return {};
  std::string text;
  for (const Json& word : words) text += (text.empty() ? "" : ", ") + word.get<std::string>();
  return {text};
}

Texts oneEach(const Json& texts) {
  return texts.get<Texts>();
}

Texts yesOrNo(const Json& value) {
  return {value.get<bool>() ? "yes" : "no"};
}

struct Entry {
  const char* key;
  Json (*value)(const RunResult&);
  const char* label = nullptr;  ///< of the row for people; null when there is none
  Texts (*show)(const Json& value) = plain;
};

template <auto Count>
Json hostCount(const RunResult& result) {
  return result.host.*Count;
}

template <auto Member>
Json member(const RunResult& result) {
  return result.*Member;
}

using standin::host::Counts;

/// Adding a value: a row here and its row in docs/outputs.md. The order is that of the file and of the rows
/// for people.
const Entry kEntries[] = {
    {"end_ms", member<&RunResult::endMs>, "session", milliseconds},
    {"ended_by", member<&RunResult::ending>},
    {"passes_3d", hostCount<&Counts::updates>, "passes in 3D"},
    {"passes_2d", hostCount<&Counts::paperUpdates>, "passes in 2D"},
    {"commits", hostCount<&Counts::commits>, "views committed"},
    {"texts_sent", hostCount<&Counts::textsSent>, "texts sent"},
    {"prints", hostCount<&Counts::modulePrints>, "prints"},
    {"locks", hostCount<&Counts::locks>, "document locks taken"},
    {"unlocks", hostCount<&Counts::unlocks>, "document locks released"},
    {"lock_depth_at_end", hostCount<&Counts::lockDepth>},
    {"open_objects", hostCount<&Counts::openObjects>},
    {"selection_sets_not_freed", hostCount<&Counts::selectionSetsAlive>},
    {"calls_off_main_thread", hostCount<&Counts::callsOffMainThread>},
    {"reactors_left", hostCount<&Counts::reactors>},
    {"commands_left", hostCount<&Counts::commandsRegistered>},
    {"device_events_delivered", member<&RunResult::eventsDelivered>, "device events"},
    {"device_events_not_fetched", member<&RunResult::eventsNotFetched>},
    {"entities", [](const RunResult& result) { return Json(countByType(result.entities)); }, "entities",
     countList},
    {"entities_not_understood", member<&RunResult::notUnderstood>, "not understood", countList},
    {"handles_not_found",
     [](const RunResult& result) { return Json(handleTexts(result.recording.handlesNotFound)); },
     "handles not found", listed},
    {"moments_left_out", member<&RunResult::momentsLeftOut>, "moments that show no changes", unlessZero},
    {"host_breaches", [](const RunResult& result) { return breachesJson(result.recording.breaches); }},
    {"host_breaches_in_all", hostCount<&Counts::breachesInAll>},
    {"problems", member<&RunResult::problems>, "problem", oneEach},
    {"clean", [](const RunResult& result) { return Json(result.isClean()); }, "clean", yesOrNo}};

}  // namespace

std::string summaryJson(const RunResult& result, const RunNames& names) {
  Json json;
  json["drawing"] = names.drawing;
  json["session"] = names.session;
  for (const Entry& entry : kEntries) json[entry.key] = entry.value(result);
  // A file name on Linux need not be UTF-8. Its bad bytes are replaced, since dump() would throw otherwise.
  return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::vector<std::pair<std::string, std::string>> summaryRows(const RunResult& result) {
  std::vector<std::pair<std::string, std::string>> rows;
  for (const Entry& entry : kEntries) {
    if (entry.label == nullptr) continue;
    for (std::string& text : entry.show(entry.value(result))) rows.emplace_back(entry.label, std::move(text));
  }
  return rows;
}

}  // namespace workbench
