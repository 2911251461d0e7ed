/// The settings file, typed here: tests do not take what they expect from the code that they test.
#ifndef TESTS_SUPPORT_SETTINGS_TEXT_H
#define TESTS_SUPPORT_SETTINGS_TEXT_H

#include <map>
#include <string>

namespace tests {

/// The file that the plug-in writes when it finds none.
extern const std::string kDefaultSettings;

/// New values by key.
using SettingsChanges = std::map<std::string, std::string>;

/// The default file with other values; each comment keeps its column as far as the value lets it. Throws
/// std::invalid_argument for a key that the file does not have.
std::string settingsText(const SettingsChanges& changes);

/// Each level that has a switch, set to `value` ("on" or "off").
SettingsChanges everyLogLevel(const std::string& value);

}  // namespace tests

#endif
