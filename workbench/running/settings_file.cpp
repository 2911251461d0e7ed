#include "workbench/running/settings_file.h"

#include "workbench/text_input.h"

#include <algorithm>

namespace workbench {
namespace {

/// A line with a key, and where its value is: from after the separator up to the comment.
struct Parts {
  std::string_view key;
  std::size_t valueBegin = 0;
  std::size_t valueEnd = 0;
};

std::optional<Parts> partsOf(std::string_view line) {
  const std::size_t separator = line.find('=');
  const std::size_t comment = line.find('#');
  if (separator == std::string_view::npos || comment < separator) return std::nullopt;
  const std::string_view key = trimmed(line.substr(0, separator));
  if (key.empty()) return std::nullopt;
  return Parts{key, separator + 1, std::min(comment, line.size())};
}

/// Calls `use` with each line, without its end, and where it begins.
template <typename Use>
void eachLine(std::string_view file, Use use) {
  for (std::size_t begin = 0; begin < file.size();) {
    const std::size_t end = std::min(file.find('\n', begin), file.size());
    std::string_view line = file.substr(begin, end - begin);
    if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
    use(line, begin);
    begin = end + 1;
  }
}

}  // namespace

std::vector<SettingLine> settingLines(std::string_view file) {
  std::vector<SettingLine> settings;
  std::string section;
  eachLine(file, [&](std::string_view line, std::size_t) {
    if (line.substr(0, 1) == "[") section = line.substr(1, line.find(']') - 1);
    const auto parts = partsOf(line);
    if (!parts) return;
    const std::string_view comment = line.substr(parts->valueEnd);
    settings.push_back(
        {section, std::string(parts->key),
         std::string(trimmed(line.substr(parts->valueBegin, parts->valueEnd - parts->valueBegin))),
         std::string(trimmed(comment.substr(comment.empty() ? 0 : 1)))});
  });
  return settings;
}

std::optional<std::string> withSetting(std::string_view file, std::string_view key, std::string_view value) {
  std::optional<std::string> changed;
  eachLine(file, [&](std::string_view line, std::size_t begin) {
    const auto parts = partsOf(line);
    if (changed || !parts || parts->key != key) return;
    // The columns stay as they are where the value fits.
    std::string text = " " + std::string(value);
    const std::size_t width = parts->valueEnd - parts->valueBegin;
    text.resize(std::max(text.size() + 1, width), ' ');
    changed = std::string(file.substr(0, begin + parts->valueBegin)) + text +
              std::string(file.substr(begin + parts->valueEnd));
  });
  return changed;
}

}  // namespace workbench
