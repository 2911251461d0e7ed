#include "common_sources/settings.h"

#include "LM_Daemon/src/logging.h"
#include "config/cnfg.h"
#include "util/native_file.h"
#include "util/util.h"

#include <new>
#include <type_traits>
#include <variant>

namespace {

constexpr const char* kClass = "Settings";
// Wide enough for the longest field name; the subtraction in dump() would wrap for a longer one.
constexpr std::size_t kLabelWidth = 23;
constexpr std::string_view kDumpTitle = "(AutoCAD Plug-in) ";

/// Where the value of a setting is kept.
template <typename Owner>
using Field = std::variant<std::string Owner::*, std::int32_t Owner::*, bool Owner::*>;

template <typename Owner, std::size_t kCount>
std::string section(std::string_view name, const Setting (&settings)[kCount], const Owner& owner,
                    const Field<Owner> (&fields)[kCount]) {
  std::string text = "[" + std::string(name) + "]\n";
  for (std::size_t i = 0; i < kCount; ++i)
    text += settingLine(settings[i],
                        std::visit([&owner](auto fieldP) { return settingText(owner.*fieldP); }, fields[i]));
  return text;
}

}  // namespace

/// The fields in the order of the list of settings.
struct Settings::Fields {
#define LM_PROGRAM_FIELD(type, field, key, defaultValue, usable, comment) &Settings::field,
#define LM_LOG_FIELD(type, field, key, defaultValue, usable, comment) &LogPars::field,
  static constexpr Field<Settings> kProgram[] = {LM_PROGRAM_SETTINGS(LM_PROGRAM_FIELD)};
  static constexpr Field<LogPars> kLog[] = {LM_LOG_SETTINGS(LM_LOG_FIELD)};
#undef LM_PROGRAM_FIELD
#undef LM_LOG_FIELD

  /// Returns the sum of the reader's codes: 0 when every key of the section was read.
  template <typename Owner, std::size_t kCount>
  static int read(Cnfg& cnfg, std::string_view section, const Setting (&settings)[kCount], Owner& owner,
                  const Field<Owner> (&fields)[kCount]) {
    int sum = 0;
    for (std::size_t i = 0; i < kCount; ++i) {
      std::string text;
      // Goes on after a missing key, so that the log names every one of them.
      sum += readParameter(cnfg, settings[i].key, text, section);
      std::visit([&owner, &text](auto fieldP) { readSetting(owner.*fieldP, text); }, fields[i]);
    }
    return sum;
  }
};

Settings::Settings() {
  findFolders();
  LM_LOG(kCreation, kClass, "Settings::Settings") << "Constructing ...";
  mLogPars.mSettingsDirPath = mSettingsDirPath;
  // Also given to the log directly, because setDefaults() resets the parameters with their folder.
  processLog().setDirectory(mSettingsDirPath);
  if (mUserProfileDir.empty())
    LM_LOG(kError, kClass, "Settings::Settings") << "Environment variable USERPROFILE is not set!";
  mSettingsFilePath = mApplicationsDirPath + "\\" + mFileName;
  readOrReset();
  LM_LOG(kInfo, kClass, "Settings::Settings") << "\n" << dump();
  LM_LOG(kCreation, kClass, "Settings::Settings") << "Constructed.";
}

Settings::~Settings() {
  try {
    writeSettingsFile(mSettingsFilePath);
  } catch (const std::bad_alloc&) {
    LM_LOG(kError, kClass, "Settings::~Settings") << "No memory to write the settings file!";
  }
  LM_LOG(kCreation, kClass, "Settings::~Settings") << "Destructed.";
}

void Settings::findFolders() {
  mUserProfileDir = Util::getUserProfileDir();
  mSettingsDirPath = mUserProfileDir + "\\" + mFolderName;
  mDevicesDirPath = mSettingsDirPath + "\\" + mDevicesFolderName;
  mApplicationsDirPath = mSettingsDirPath + "\\" + mApplicationsFolderName;
}

void Settings::readOrReset() {
  // A single missing key resets all values; what could be read is given up.
  if (readSettingsFile(mSettingsFilePath) >= 0) return;
  // The text is fixed, also for a file that was found and is incomplete.
  LM_LOG(kInfo, kClass, "Settings::Settings") << "Settings file not found - using default values ...";
  setDefaults();
  writeSettingsFile(mSettingsFilePath);
}

int Settings::readSettingsFile(const std::string& path) {
  Cnfg cnfg;
  if (cnfg.open(path) != Cnfg::kOk) return -1;
  int sum = Fields::read(cnfg, kProgramSection, kProgramSettings, *this, Fields::kProgram);
  sum += Fields::read(cnfg, mLogPars.mSectionName, kLogSettings, mLogPars, Fields::kLog);
  if (sum == 0) return 0;
  LM_LOG(kError, kClass, "Settings::readSettingsFile") << "Error reading settings file!";
  return -2;
}

int Settings::readParameter(Cnfg& cnfg, std::string_view key, std::string& value, std::string_view section) {
  const int code = cnfg.readParameter(key, value, section);
  if (code != Cnfg::kOk) LM_LOG(kError, kClass, "Settings::readParameter") << cnfg.getErrorText();
  return code;
}

int Settings::readNextParameter(Cnfg& cnfg, std::string& key, std::string& value) {
  const int code = cnfg.readNextParameter(key, value);
  if (code != Cnfg::kOk) LM_LOG(kError, kClass, "Settings::readNextParameter") << cnfg.getErrorText();
  return code;
}

void Settings::setDefaults() {
#define LM_ASSIGN_DEFAULT(type, field, key, defaultValue, usable, comment) field = defaultValue;
  LM_PROGRAM_SETTINGS(LM_ASSIGN_DEFAULT)
#undef LM_ASSIGN_DEFAULT
  mLogPars = LogPars();
}

std::string Settings::fileText() const {
  return std::string(kSettingsFileTitle) + "\n\n" +
         section(kProgramSection, kProgramSettings, *this, Fields::kProgram) + "\n" +
         section(mLogPars.mSectionName, kLogSettings, mLogPars, Fields::kLog);
}

int Settings::writeSettingsFile(const std::string& path) {
  LM_LOG(kTrace, kClass, "Settings::writeSettingsFile") << "Writing new default settings file ...";
  if (!replaceFile(path, fileText())) {
    LM_LOG(kError, kClass, "Settings::writeSettingsFile")
        << "Writing default settings file '" << mFileName << "' failed!";
    return -1;
  }
  LM_LOG(kTrace, kClass, "Settings::writeSettingsFile") << "Default settings file written.";
  return 0;
}

std::string Settings::dump() const {
  std::string text;
  const auto appendLine = [&text](std::string_view label, const std::string& value) {
    text.append(kLabelWidth - label.size(), ' ').append(label).append(": ").append(value).append("\n");
  };
  const auto valueText = [](const auto& value) {
    // A switch is 1 or 0 here; the file and the dump of the log's parameters have "on" or "off".
    if constexpr (std::is_same_v<decltype(value), const std::string&>)
      return value;
    else
      return std::to_string(value);
  };
#define LM_APPEND_LINE(type, field, key, defaultValue, usable, comment) appendLine(#field, valueText(field));
  LM_PROGRAM_SETTINGS(LM_APPEND_LINE)
#undef LM_APPEND_LINE
  // Over the padding of the first label, which is blank there.
  text.replace(0, kDumpTitle.size(), kDumpTitle);
  return text + "               mLogPars:\n" + mLogPars.dump();
}
