#include "common_sources/settings_list.h"

#include "util/util.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

std::string settingText(const std::string& value) {
  return value;
}
std::string settingText(std::int32_t value) {
  return std::to_string(value);
}
std::string settingText(bool value) {
  return Util::boolToOnOff(value);
}

std::string defaultText(const Setting& setting) {
  if (const auto* const textP = std::get_if<const char*>(&setting.defaultValue)) return *textP;
  if (const auto* const numberP = std::get_if<std::int32_t>(&setting.defaultValue))
    return settingText(*numberP);
  return settingText(std::get<bool>(setting.defaultValue));
}

void readSetting(std::string& value, const std::string& text) {
  value = text;
}
void readSetting(std::int32_t& value, const std::string& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  // long long, so that a number of too many digits ends at the limit on every platform.
  const long long number = std::strtoll(text.c_str(), nullptr, 10);
  value = static_cast<std::int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}
void readSetting(bool& value, const std::string& text) {
  value = Util::onOffToBool(text);
}
