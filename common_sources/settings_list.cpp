#include "common_sources/settings_list.h"

#include "util/util.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <utility>

namespace {

// Minimum widths: a longer key or value moves the comment and is never cut.
constexpr std::size_t kKeyWidth = 22;
constexpr std::size_t kValueWidth = 50;

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

}  // namespace

std::int32_t usableNumber(std::string_view key, std::int32_t value) {
  for (const Setting& setting : kProgramSettings)
    if (setting.key == key && !isUsable(setting.usableNumbers, value))
      return std::get<std::int32_t>(setting.defaultValue);
  return value;
}

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

std::string settingLine(const Setting& setting, std::string value) {
  return "\t" + padded(std::string(setting.key), kKeyWidth) + "= " + padded(std::move(value), kValueWidth) +
         std::string(setting.comment) + "\n";
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
