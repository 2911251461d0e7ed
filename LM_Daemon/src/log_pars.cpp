#include "LM_Daemon/src/log_pars.h"

#include "util/util.h"

#include <string_view>

namespace {

// As wide as the longest label, `mSettingsDirPath`; the subtraction below would wrap for a longer one.
constexpr std::size_t kLabelWidth = 16;

const std::string& toText(const std::string& value) {
  return value;
}
std::string toText(std::int32_t value) {
  return std::to_string(value);
}
std::string toText(bool value) {
  return Util::boolToOnOff(value);
}

template <typename Value>
void appendLine(std::string& text, std::string_view label, const Value& value) {
  text.append("    ").append(kLabelWidth - label.size(), ' ').append(label).append(": ");
  text.append(toText(value)).append("\n");
}

}  // namespace

std::string LogPars::dump() const {
  std::string text;
  appendLine(text, "mSectionName", mSectionName);
  appendLine(text, "mSettingsDirPath", mSettingsDirPath);
#define LM_APPEND_LINE(type, field, key, defaultValue, usable, comment) appendLine(text, #field, field);
  LM_LOG_SETTINGS(LM_APPEND_LINE)
#undef LM_APPEND_LINE
  return text;
}
