/// Every value of the plug-in that a user may tune. Construction reads them from `autocad_addin.ini` in the
/// user's profile, destruction writes them back. Main thread only.
#ifndef COMMON_SOURCES_SETTINGS_H
#define COMMON_SOURCES_SETTINGS_H

#include "common_sources/settings_list.h"

#include <cstdint>
#include <string>
#include <string_view>

class Cnfg;

class Settings {
 public:
  /// Finds the folders, gives the log its directory and reads the settings file. When the file, a section or
  /// a single key is missing, all values become the defaults and the file is written anew; folders are not
  /// created. Never fails: what cannot be read or written is logged.
  Settings();
  /// Writes the values in force to the settings file, as the constructor would the defaults. Without memory
  /// the file may be left as it is.
  ~Settings();
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  /// Empty when the environment has no USERPROFILE.
  const std::string& userProfileDir() const { return mUserProfileDir; }
  /// Folders in Windows syntax, without a separator at the end.
  const std::string& settingsDirPath() const { return mSettingsDirPath; }
  const std::string& devicesDirPath() const { return mDevicesDirPath; }
  const std::string& applicationsDirPath() const { return mApplicationsDirPath; }
  const std::string& settingsFilePath() const { return mSettingsFilePath; }

  const std::string& name() const { return mName; }
  const std::string& version() const { return mVersion; }
  /// What cap values are divided by for translations and for rotations.
  std::int32_t transSensBase() const { return mTraSensBase; }
  std::int32_t rotSensBase() const { return mRotSensBase; }
  /// Cap values up to this magnitude count as released.
  std::int32_t minThreshold() const { return mMinThreshold; }
  /// Milliseconds that one continuous cap movement may take.
  std::int32_t maxContMoveTime() const { return mMaxContMoveTime; }
  bool toggleRotationCenter() const { return mToggleRotationCenter; }
  bool toggleRotationAxis() const { return mToggleRotationAxis; }
  bool scrollTreeAndList() const { return mScrollTreeAndList; }
  bool useInt3dIntrfce() const { return mUseInt3dIntrfce; }
  const LogPars& logPars() const { return mLogPars; }

  void setTransSensBase(std::int32_t divisor) { mTraSensBase = divisor; }
  void setMinThreshold(std::int32_t threshold) { mMinThreshold = threshold; }
  void setToggleRotationCenter(bool isOn) { mToggleRotationCenter = isOn; }
  void setToggleRotationAxis(bool isOn) { mToggleRotationAxis = isOn; }
  void setScrollTreeAndList(bool isOn) { mScrollTreeAndList = isOn; }

  /// Reads all values from `path`. 0: every key was read; -1: the file cannot be opened and no value has
  /// changed; -2: at least one key could not be read.
  int readSettingsFile(const std::string& path);

  /// Writes all values to `path`. 0, or -1 when that fails.
  int writeSettingsFile(const std::string& path);

  /// The built-in values, those of the log included.
  void setDefaults();

  /// The values as text for the log, one line each.
  std::string dump() const;

 protected:
  /// As Cnfg's operations of the same names, with trimming; a failure is logged.
  static int readParameter(Cnfg& cnfg, std::string_view key, std::string& value, std::string_view section);
  static int readNextParameter(Cnfg& cnfg, std::string& key, std::string& value);

  std::string mFolderName = "Lumetrapad";
  std::string mFileName = "autocad_addin.ini";
  std::string mDevicesFolderName = "Devices";
  std::string mApplicationsFolderName = "Applications";
  std::string mUserProfileDir;
  std::string mSettingsFilePath;
  std::string mApplicationsDirPath;
#define LM_DECLARE_FIELD(type, field, key, defaultValue, usable, comment) type field = defaultValue;
  LM_PROGRAM_SETTINGS(LM_DECLARE_FIELD)
#undef LM_DECLARE_FIELD
  LogPars mLogPars;

 private:
  struct Fields;

  void findFolders();
  void readOrReset();
  std::string fileText() const;

  std::string mSettingsDirPath;
  std::string mDevicesDirPath;
};

#endif
