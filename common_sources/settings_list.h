/// The list of the settings. A new setting is one row of it, and an accessor for those who use its value.
#ifndef COMMON_SOURCES_SETTINGS_LIST_H
#define COMMON_SOURCES_SETTINGS_LIST_H

#include "LM_Daemon/src/log_pars.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

/// Section PROGRAM of the settings file, in the order of its lines. A row: type, field of Settings, key,
/// default, usable numbers, comment in the file. Section LOGGING is LM_LOG_SETTINGS in log_pars.h, with the
/// same kind of rows.
#define LM_PROGRAM_SETTINGS(X)                                                                           \
  X(std::string, mName, name, "AutoCAD Plug-in", kAny, "# program's name")                               \
  X(std::string, mVersion, version, "2.9.0", kAny, "# program's version number")                         \
  X(std::int32_t, mTraSensBase, transSensBase, 20000, kNotZero,                                          \
    "# base sensitivity divisor for translation")                                                        \
  X(std::int32_t, mRotSensBase, rotSensBase, 10000, kNotZero, "# base sensitivity divisor for rotation") \
  X(std::int32_t, mMinThreshold, minThreshold, 0, kNotNegative,                                          \
    "# minimal threshold (overrides setting in control panel)")                                          \
  X(std::int32_t, mMaxContMoveTime, maxContMoveTime, 500, kNotNegative,                                  \
    "# maximal time for continuous cap movement in milliseconds")                                        \
  X(bool, mToggleRotationCenter, toggleRotationCenter, true, kAny,                                       \
    "# if true a selected object will define the rotation center")                                       \
  X(bool, mToggleRotationAxis, toggleRotationAxis, false, kAny,                                          \
    "# if true a selected line will define the rotation axis")                                           \
  X(bool, mScrollTreeAndList, scrollTreeAndList, true, kAny,                                             \
    "# scroll trees and lists within Catia if the mouse is above (on/off)")                              \
  X(bool, mUseInt3dIntrfce, useInt3dIntrfce, false, kAny,                                                \
    "# if true no rotations/translations are done by this plugin; the Pantavis Plug-in must be used "    \
    "instead.")

inline constexpr std::string_view kProgramSection = "PROGRAM";

/// The numbers that the module can work with. kNotZero: a divisor. kNotNegative: a time or a threshold. For
/// both, the default replaces any other number, with a line in the log. kPositive: a size; with any other
/// number every entry begins a new log file.
enum class UsableNumbers { kAny, kNotZero, kNotNegative, kPositive };

/// A setting as the file and its readers see it. The default's type is the setting's kind: text, number,
/// switch.
struct Setting {
  std::string_view key;
  std::variant<const char*, std::int32_t, bool> defaultValue;
  UsableNumbers usableNumbers;
  std::string_view comment;
};

#define LM_DESCRIBE_SETTING(type, field, key, defaultValue, usable, comment) \
  Setting{#key, defaultValue, UsableNumbers::usable, comment},
inline constexpr Setting kProgramSettings[] = {LM_PROGRAM_SETTINGS(LM_DESCRIBE_SETTING)};
inline constexpr Setting kLogSettings[] = {LM_LOG_SETTINGS(LM_DESCRIBE_SETTING)};
#undef LM_DESCRIBE_SETTING

constexpr bool isUsable(UsableNumbers usable, std::int32_t number) {
  switch (usable) {
    case UsableNumbers::kAny:
      return true;
    case UsableNumbers::kNotZero:
      return number != 0;
    case UsableNumbers::kNotNegative:
      return number >= 0;
    case UsableNumbers::kPositive:
      return number > 0;
  }
  return true;
}

/// `value`, or the default of the program's setting `key` when the module cannot work with it.
std::int32_t usableNumber(std::string_view key, std::int32_t value);

/// A value as the file holds it: numbers in decimal, switches as "on" or "off".
std::string settingText(const std::string& value);
std::string settingText(std::int32_t value);
std::string settingText(bool value);
std::string defaultText(const Setting& setting);

/// The first line of the file, without its end.
inline constexpr std::string_view kSettingsFileTitle =
    "# Configuration file for Lumetrapad's AutoCAD plug-in";
/// The line of a setting, with its end: key and value in columns, the comment after them.
std::string settingLine(const Setting& setting, std::string value);

/// Reads a value from a text of the file; never fails. A number: blanks skipped, digits up to the first other
/// character, 0 without any, the nearest 32-bit value when it is out of range. A switch: on when the text
/// contains "on".
void readSetting(std::string& value, const std::string& text);
void readSetting(std::int32_t& value, const std::string& text);
void readSetting(bool& value, const std::string& text);

#endif
