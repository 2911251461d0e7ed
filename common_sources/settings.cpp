#include "common_sources/settings.h"

#include "LM_Daemon/src/logging.h"
#include "config/cnfg.h"
#include "util/native_file.h"
#include "util/util.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <new>
#include <variant>

namespace {

constexpr const char* kClass = "Settings";
constexpr const char* kProgramSection = "PROGRAM";
constexpr std::size_t kKeyWidth = 22;
constexpr std::size_t kValueWidth = 50;

/// A key of the settings file, the field that holds its value, and the comment written beside it.
template <typename Owner>
struct Item {
  const char* keyP;
  std::variant<std::string Owner::*, std::int32_t Owner::*, bool Owner::*> field;
  const char* commentP;
};

/// Leading blanks skipped, digits up to the first other character, 0 without any.
std::int32_t toInteger(const std::string& text) {
  using Limits = std::numeric_limits<std::int32_t>;
  const long long value = std::strtoll(text.c_str(), nullptr, 10);
  return static_cast<std::int32_t>(std::clamp<long long>(value, Limits::min(), Limits::max()));
}

void assign(std::string& field, const std::string& text) {
  field = text;
}
void assign(std::int32_t& field, const std::string& text) {
  field = toInteger(text);
}
void assign(bool& field, const std::string& text) {
  field = Util::onOffToBool(text);
}

std::string toText(const std::string& field) {
  return field;
}
std::string toText(std::int32_t field) {
  return std::to_string(field);
}
std::string toText(bool field) {
  return Util::boolToOnOff(field);
}

std::string padded(std::string text, std::size_t width) {
  if (text.size() < width) text.resize(width, ' ');
  return text;
}

template <typename Owner>
std::string itemLine(const Owner& owner, const Item<Owner>& item) {
  const std::string value = std::visit([&owner](auto fieldP) { return toText(owner.*fieldP); }, item.field);
  return "\t" + padded(item.keyP, kKeyWidth) + "= " + padded(value, kValueWidth) + item.commentP + "\n";
}

}  // namespace

/// The keys in the order in which they are read and written.
struct Settings::Items {
  static constexpr Item<Settings> kProgram[] = {
      {"name", &Settings::mName, "# program's name"},
      {"version", &Settings::mVersion, "# program's version number"},
      {"transSensBase", &Settings::mTraSensBase, "# base sensitivity divisor for translation"},
      {"rotSensBase", &Settings::mRotSensBase, "# base sensitivity divisor for rotation"},
      {"minThreshold", &Settings::mMinThreshold, "# minimal threshold (overrides setting in control panel)"},
      {"maxContMoveTime", &Settings::mMaxContMoveTime,
       "# maximal time for continuous cap movement in milliseconds"},
      {"toggleRotationCenter", &Settings::mToggleRotationCenter,
       "# if true a selected object will define the rotation center"},
      {"toggleRotationAxis", &Settings::mToggleRotationAxis,
       "# if true a selected line will define the rotation axis"},
      {"scrollTreeAndList", &Settings::mScrollTreeAndList,
       "# scroll trees and lists within Catia if the mouse is above (on/off)"},
      {"useInt3dIntrfce", &Settings::mUseInt3dIntrfce,
       "# if true no rotations/translations are done by this plugin; the Pantavis Plug-in must be used "
       "instead."},
  };
  static constexpr Item<LogPars> kLogging[] = {
      {"logFile", &LogPars::mLogFile, "# name of log file"},
      {"maxSize", &LogPars::mMaxSize, "# max. size of log file (kB)"},
      {"logToFile", &LogPars::mIsLogToFile, "# log into log file:               off/on"},
      {"logToCnsl", &LogPars::mIsLogToCnsl, "# log to console:                  off/on"},
      {"warning", &LogPars::mIsWarning, "# log warnings:                    off/on"},
      {"creation", &LogPars::mIsCreation, "# log creation etc.:               off/on"},
      {"trace", &LogPars::mIsTrace, "# log trace data:                  off/on"},
      {"devcom", &LogPars::mIsDevCom, "# not used in this plug-in"},
      {"intcom", &LogPars::mIsIntCom, "# log internal communication data: off/on"},
      {"info", &LogPars::mIsInfo, "# log info data:                   off/on"},
      {"debug", &LogPars::mIsDebug, "# log debug data:                  off/on"},
      {"tmp", &LogPars::mIsTmp, "# log data of temporal interest:   off/on"},
      {"fileToLog", &LogPars::mExclFileToLog, "# name of the exclusively logged file"},
  };

  /// Answers the sum of the reader's codes: 0 when every key of the section was read.
  template <typename Owner, std::size_t kCount>
  static int read(Cnfg& cnfg, Owner& owner, const Item<Owner> (&items)[kCount], const std::string& section) {
    int sum = 0;
    for (const Item<Owner>& item : items) {
      std::string text;
      sum += readParameter(cnfg, item.keyP, text, section);
      std::visit([&owner, &text](auto fieldP) { assign(owner.*fieldP, text); }, item.field);
    }
    return sum;
  }
};

Settings::Settings() {
  findFolders();
  LM_LOG(kCreation, kClass, "Settings::Settings") << "Constructing ...";
  mLogPars.mSettingsDirPath = mSettingsDirPath;
  processLog().setDirectory(mSettingsDirPath);
  reportMissingProfile();
  mSettingsFilePath = mApplicationsDirPath + "\\" + mFileName;
  readOrReset();
  LM_LOG(kInfo, kClass, "Settings::Settings") << "\n" << dump();
  LM_LOG(kCreation, kClass, "Settings::Settings") << "Constructed.";
}

void Settings::reportMissingProfile() const {
  if (mUserProfileDir.empty())
    LM_LOG(kError, kClass, "Settings::reportMissingProfile")
        << "Environment variable USERPROFILE is not set!";
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
  if (readSettingsFile(mSettingsFilePath) >= 0) return;
  LM_LOG(kInfo, kClass, "Settings::Settings") << "Settings file not found - using default values ...";
  setDefaults();
  writeSettingsFile(mSettingsFilePath);
}

int Settings::readSettingsFile(const std::string& path) {
  Cnfg cnfg;
  if (cnfg.open(path) != Cnfg::kOk) return -1;
  int sum = Items::read(cnfg, *this, Items::kProgram, kProgramSection);
  sum += Items::read(cnfg, mLogPars, Items::kLogging, mLogPars.mSectionName);
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
  mName = "AutoCAD Plug-in";
  mVersion = "2.9.0";
  mTraSensBase = 20000;
  mRotSensBase = 10000;
  mMinThreshold = 0;
  mMaxContMoveTime = 500;
  mToggleRotationCenter = true;
  mToggleRotationAxis = false;
  mScrollTreeAndList = true;
  mUseInt3dIntrfce = false;
  mLogPars = LogPars();
}

std::string Settings::fileText() const {
  std::string text = "# Configuration file for Lumetrapad's AutoCAD plug-in\n\n";
  text.append("[").append(kProgramSection).append("]\n");
  for (const auto& item : Items::kProgram) text += itemLine(*this, item);
  text.append("\n[").append(mLogPars.mSectionName).append("]\n");
  for (const auto& item : Items::kLogging) text += itemLine(mLogPars, item);
  return text;
}

int Settings::writeSettingsFile(const std::string& path) {
  LM_LOG(kTrace, kClass, "Settings::writeSettingsFile") << "Writing new default settings file ...";
  // Before the file is emptied, which nothing may follow that can fail for want of memory.
  const std::string text = fileText();
  NativeFile file;
  if (!file.openForReplacing(path) || !file.write(text)) {
    LM_LOG(kError, kClass, "Settings::writeSettingsFile")
        << "Writing default settings file '" << mFileName << "' failed!";
    return -1;
  }
  LM_LOG(kTrace, kClass, "Settings::writeSettingsFile") << "Default settings file written.";
  return 0;
}

std::string Settings::dump() const {
  std::string text;
  const auto line = [&text](const char* labelP, const std::string& value) {
    text.append(labelP).append(value).append("\n");
  };
  line("(AutoCAD Plug-in) mName: ", mName);
  line("               mVersion: ", mVersion);
  line("           mTraSensBase: ", std::to_string(mTraSensBase));
  line("           mRotSensBase: ", std::to_string(mRotSensBase));
  line("          mMinThreshold: ", std::to_string(mMinThreshold));
  line("       mMaxContMoveTime: ", std::to_string(mMaxContMoveTime));
  line("  mToggleRotationCenter: ", std::to_string(mToggleRotationCenter));
  line("    mToggleRotationAxis: ", std::to_string(mToggleRotationAxis));
  line("     mScrollTreeAndList: ", std::to_string(mScrollTreeAndList));
  line("       mUseInt3dIntrfce: ", std::to_string(mUseInt3dIntrfce));
  line("               mLogPars:", "");
  return text + mLogPars.dump();
}
