#include "workbench/live/page_message.h"

#include "workbench/input_error.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <limits>

namespace workbench {
namespace {

using Json = nlohmann::json;

/// Nothing that a page sends is nested deeper; the parser would follow any depth.
constexpr int kDeepest = 4;

Json parsedJson(std::string_view text) {
  const auto isShallow = [](int depth, Json::parse_event_t, Json&) {
    if (depth > kDeepest) throw PageMessageError("nested too deeply");
    return true;
  };
  try {
    return Json::parse(text, isShallow);
  } catch (const Json::exception& error) {
    throw PageMessageError(error.what());
  }
}

/// A verb that reads a file, or that has no meaning while the user is at the host.
bool isRefused(const UserAction& action) {
  if (std::holds_alternative<WriteMenu>(action)) return true;
  // Settings have a message of their own, with all values at once.
  if (std::holds_alternative<ChangeSetting>(action) || std::holds_alternative<LoadAgain>(action)) return true;
  const auto* const documentP = std::get_if<SetDocument>(&action);
  return documentP != nullptr && documentP->kind != SetDocument::Kind::kSwitch;
}

bool hasVerb(std::string_view line, std::string_view verb) {
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  return line.substr(0, line.find_first_of(" \t")) == verb;
}

std::uint32_t numberOf(const Json& message) {
  const auto number = message.find("n");
  if (number == message.end()) return 0;
  if (!number->is_number_unsigned() || *number > std::numeric_limits<std::uint32_t>::max())
    throw PageMessageError("\"n\": expected a whole number of 32 bits");
  return number->get<std::uint32_t>();
}

PageMessage actionOf(const std::string& line, std::uint32_t number) {
  // What a session file cannot hold could not be recorded either.
  if (line.find_first_of("\n\r#") != std::string::npos)
    throw PageMessageError("\"do\": expected one line without \"#\"");
  Session session;
  try {
    session = parseSession("0 " + line, "page");
  } catch (const InputError& error) {
    throw PageMessageError(error.what());
  }
  // A motion by its code repeats the cap's last deflection, which this line alone does not have and the
  // session that is saved does.
  if (hasVerb(line, "event")) throw PageMessageError("\"do\": expected an event by its name");
  if (!session.device.empty()) return PageDeviceAction{session.device.front().action, line, number};
  if (session.user.empty() || isRefused(session.user.front().action))
    throw PageMessageError("\"do\": expected an action of the device or the user");
  return PageUserAction{std::move(session.user.front().action), line};
}

PageMessage settingsOf(const Json& values) {
  PageChangesSettings change;
  for (const auto& [key, value] : values.items()) {
    if (!value.is_string()) throw PageMessageError("\"settings\": expected texts");
    const std::string& text = value.get_ref<const std::string&>();
    // Each value is on a line of its own in the file, and a comment begins at "#".
    const bool isLine =
        std::none_of(text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == '#'; });
    if (!isLine) throw PageMessageError("\"settings\": expected values of one line without \"#\"");
    change.values.emplace_back(key, text);
  }
  return change;
}

std::size_t indexOf(const Json& value) {
  // The library would take 1.5 and -1 for whole numbers without a sign.
  if (!value.is_number_unsigned()) throw PageMessageError("\"open\": expected an index");
  return value.get<std::size_t>();
}

PageMessage messageOf(const Json& message) {
  if (message.contains("do")) return actionOf(message.at("do").get<std::string>(), numberOf(message));
  if (message.contains("awake")) return PageIsAwake{};
  if (message.contains("seen")) return PageHasSeen{};
  if (message.contains("take")) return PageTakesOver{};
  if (message.contains("open")) return PageOpens{indexOf(message.at("open"))};
  if (message.contains("settings")) return settingsOf(message.at("settings"));
  if (message.contains("save")) return PageSaves{};
  if (message.contains("report")) return PageWantsReport{};
  throw PageMessageError("no known key");
}

}  // namespace

PageMessage parsePageMessage(std::string_view text) {
  const Json message = parsedJson(text);
  if (!message.is_object()) throw PageMessageError("expected an object");
  try {
    return messageOf(message);
  } catch (const Json::exception& error) {
    throw PageMessageError(error.what());
  }
}

}  // namespace workbench
