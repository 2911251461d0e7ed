/// The module's settings file as a user edits it: lines "key = value # comment" in sections. Read apart from
/// the module, so that this does not repeat an error of its own.
#ifndef WORKBENCH_SETTINGS_FILE_H
#define WORKBENCH_SETTINGS_FILE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

struct SettingLine {
  std::string section;
  std::string key;
  std::string value;
  std::string comment;  ///< without the "#"
};

/// Every line with a key, in the order of the file. Bytes are kept as they are.
std::vector<SettingLine> settingLines(std::string_view file);

/// The file with another value of the key; none when no line has the key.
std::optional<std::string> withSetting(std::string_view file, std::string_view key, std::string_view value);

}  // namespace workbench

#endif
