#include "config/cnfg.h"
#include "tests/settings/settings_fixture.h"

#include <atomic>
#include <limits>
#include <sstream>
#include <thread>

namespace {

void expectDefaults(const Settings& settings) {
  EXPECT_EQ(settings.name(), "AutoCAD Plug-in");
  EXPECT_EQ(settings.version(), "2.9.0");
  EXPECT_EQ(settings.transSensBase(), 20000);
  EXPECT_EQ(settings.rotSensBase(), 10000);
  EXPECT_EQ(settings.minThreshold(), 0);
  EXPECT_EQ(settings.maxContMoveTime(), 500);
  EXPECT_TRUE(settings.toggleRotationCenter());
  EXPECT_FALSE(settings.toggleRotationAxis());
  EXPECT_TRUE(settings.scrollTreeAndList());
  EXPECT_FALSE(settings.useInt3dIntrfce());
}

TEST_F(SettingsTest, FoldersAreInTheUsersProfile) {
  const Settings settings;
  EXPECT_EQ(settings.userProfileDir(), profile());
  EXPECT_EQ(settings.settingsDirPath(), profile() + "\\Lumetrapad");
  EXPECT_EQ(settings.devicesDirPath(), profile() + "\\Lumetrapad\\Devices");
  EXPECT_EQ(settings.applicationsDirPath(), profile() + "\\Lumetrapad\\Applications");
  EXPECT_EQ(settings.settingsFilePath(), profile() + "\\Lumetrapad\\Applications\\autocad_addin.ini");
}

TEST_F(SettingsTest, WithoutAFileTheDefaultsHoldAndAreWritten) {
  const Settings settings;
  expectDefaults(settings);
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, TheDefaultFileReadsBackToTheDefaults) {
  write(tests::kDefaultSettings);
  Settings settings;
  expectDefaults(settings);
  EXPECT_EQ(settings.readSettingsFile(settings.settingsFilePath()), 0);
  EXPECT_EQ(settings.logPars().mSettingsDirPath, profile() + "\\Lumetrapad");
}

TEST_F(SettingsTest, AfterAResetTheLogParametersNameNoDirectory) {
  const Settings settings;
  EXPECT_EQ(settings.logPars().mSettingsDirPath, "");
}

TEST_F(SettingsTest, ValuesInForceAreWrittenAtTheEnd) {
  {
    Settings settings;
    settings.setToggleRotationAxis(true);
    settings.setScrollTreeAndList(false);
    settings.setTransSensBase(-7);
  }
  const std::string expected = replaced(
      replaced(
          replaced(tests::kDefaultSettings, "toggleRotationAxis    = off", "toggleRotationAxis    = on "),
          "scrollTreeAndList     = on ", "scrollTreeAndList     = off"),
      "= 20000", "= -7   ");
  EXPECT_EQ(file(), expected);
}

TEST_F(SettingsTest, EveryKeyIsRead) {
  write(
      "[PROGRAM]\nname=n\nversion=v\ntransSensBase=1\nrotSensBase=2\nminThreshold=3\nmaxContMoveTime=4\n"
      "toggleRotationCenter=off\ntoggleRotationAxis=on\nscrollTreeAndList=off\nuseInt3dIntrfce=on\n"
      "[LOGGING]\nlogFile=l\nmaxSize=5\nlogToFile=off\nlogToCnsl=off\nwarning=on\ncreation=off\ntrace=on\n"
      "devcom=on\nintcom=on\ninfo=off\ndebug=on\ntmp=on\nfileToLog=f\n");
  const Settings settings;
  EXPECT_EQ(settings.dump(),
            "(AutoCAD Plug-in) mName: n\n"
            "               mVersion: v\n"
            "           mTraSensBase: 1\n"
            "           mRotSensBase: 2\n"
            "          mMinThreshold: 3\n"
            "       mMaxContMoveTime: 4\n"
            "  mToggleRotationCenter: 0\n"
            "    mToggleRotationAxis: 1\n"
            "     mScrollTreeAndList: 0\n"
            "       mUseInt3dIntrfce: 1\n"
            "               mLogPars:\n"
            "        mSectionName: LOGGING\n"
            "    mSettingsDirPath: " +
                profile() +
                "\\Lumetrapad\n"
                "            mLogFile: l\n"
                "            mMaxSize: 5\n"
                "        mIsLogToFile: off\n"
                "        mIsLogToCnsl: off\n"
                "          mIsWarning: on\n"
                "         mIsCreation: off\n"
                "            mIsTrace: on\n"
                "           mIsDevCom: on\n"
                "           mIsIntCom: on\n"
                "             mIsInfo: off\n"
                "            mIsDebug: on\n"
                "              mIsTmp: on\n"
                "      mExclFileToLog: f\n");
}

class SettingsNumbers : public SettingsTest {
 protected:
  std::int32_t thresholdOf(const std::string& value) {
    write(replaced(tests::kDefaultSettings, "minThreshold          = 0", "minThreshold          = " + value));
    return Settings().minThreshold();
  }
};

TEST_F(SettingsNumbers, NumberEndsAtTheFirstOtherCharacter) {
  EXPECT_EQ(thresholdOf("12abc"), 12);
  EXPECT_EQ(thresholdOf("-5"), -5);
  EXPECT_EQ(thresholdOf("+5"), 5);
  EXPECT_EQ(thresholdOf("abc"), 0);
  EXPECT_EQ(thresholdOf(""), 0);
  EXPECT_EQ(thresholdOf("5.9"), 5);
  EXPECT_EQ(thresholdOf("0x10"), 0);
}

TEST_F(SettingsNumbers, NumberBeyondItsRangeStopsAtTheEnds) {
  EXPECT_EQ(thresholdOf("99999999999999999999"), std::numeric_limits<std::int32_t>::max());
  EXPECT_EQ(thresholdOf("-3000000000"), std::numeric_limits<std::int32_t>::min());
}

TEST_F(SettingsTest, ASizeFollowedByLettersIsRead) {
  write(replaced(tests::kDefaultSettings, "= 5000", "= 12kB"));
  EXPECT_EQ(Settings().logPars().mMaxSize, 12);
}

TEST_F(SettingsTest, ASwitchIsOnWhenItsValueContainsOn) {
  const auto logToFile = [this](const std::string& value) {
    write(
        replaced(tests::kDefaultSettings, "logToFile             = on ", "logToFile             = " + value));
    return Settings().logPars().mIsLogToFile;
  };
  EXPECT_FALSE(logToFile("yes"));
  EXPECT_FALSE(logToFile("ON"));
  EXPECT_FALSE(logToFile("off"));
  EXPECT_TRUE(logToFile("none"));
  EXPECT_TRUE(logToFile("on # comment"));
}

TEST_F(SettingsTest, AVersionIsWrittenBackUnchanged) {
  write(replaced(tests::kDefaultSettings, "2.9.0", "9.9.9"));
  { const Settings settings; }
  EXPECT_EQ(file(), replaced(tests::kDefaultSettings, "2.9.0", "9.9.9"));
}

TEST_F(SettingsTest, HandMadeLayoutIsLostAtTheEnd) {
  write("# mine\n" + replaced(tests::kDefaultSettings, "[LOGGING]", "[OTHER]\nx=1\n\n[LOGGING]"));
  { const Settings settings; }
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, AValueLongerThanItsFieldIsWrittenWhole) {
  const std::string name(60, 'n');
  write(replaced(tests::kDefaultSettings, "AutoCAD Plug-in                                   ", name));
  { const Settings settings; }
  EXPECT_NE(file().find("= " + name + "# program's name\n"), std::string::npos);
}

/// A file in which no value is the default.
std::string changedFile() {
  return tests::settingsText({{"name", "n"},          {"version", "9"},
                              {"transSensBase", "1"}, {"rotSensBase", "2"},
                              {"minThreshold", "3"},  {"maxContMoveTime", "4"},
                              {"logFile", "l.txt"},   {"maxSize", "5"},
                              {"fileToLog", "f.cpp"}, {"toggleRotationCenter", "off"},
                              {"logToFile", "off"},   {"toggleRotationAxis", "on"},
                              {"logToCnsl", "on"},    {"scrollTreeAndList", "off"},
                              {"warning", "on"},      {"useInt3dIntrfce", "on"},
                              {"creation", "off"},    {"trace", "on"},
                              {"devcom", "on"},       {"intcom", "on"},
                              {"info", "off"},        {"debug", "on"},
                              {"tmp", "on"}});
}

TEST_F(SettingsTest, AChangedFileDiffersFromTheDefaultsInEveryKey) {
  std::istringstream changed(changedFile()), defaults(tests::kDefaultSettings);
  int keys = 0;
  for (std::string line, other; std::getline(changed, line) && std::getline(defaults, other);) {
    if (line.empty() || line[0] != '\t') continue;
    EXPECT_NE(line, other);
    ++keys;
  }
  EXPECT_EQ(keys, 23);
}

TEST_F(SettingsTest, AResetTakesEveryValueToItsDefault) {
  write(replaced(changedFile(), "\tfileToLog ", "\tfileTolog "));
  const Settings settings;
  expectDefaults(settings);
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, EveryValueIsWrittenBackAsItWasRead) {
  write(changedFile());
  { const Settings settings; }
  EXPECT_EQ(file(), changedFile());
}

TEST_F(SettingsTest, AReaderNeverFindsAPartOfTheFile) {
  Settings settings;
  std::atomic<bool> isEnding{false};
  std::thread writer([&] {
    for (int i = 0; i < 50; ++i) EXPECT_EQ(settings.writeSettingsFile(settings.settingsFilePath()), 0);
    isEnding = true;
  });
  while (!isEnding) {
    Cnfg cnfg;
    std::string value;
    EXPECT_EQ(cnfg.open(settings.settingsFilePath()), Cnfg::kOk);
    EXPECT_EQ(cnfg.readParameter("fileToLog", value, "LOGGING"), Cnfg::kOk) << "the last key of the file";
  }
  writer.join();
}

TEST_F(SettingsTest, ARemovedKeyResetsEveryValue) {
  write(replaced(replaced(tests::kDefaultSettings, "= 20000", "= 77777"),
                 "\tfileToLog             =                                                   "
                 "# name of the exclusively logged file\n",
                 ""));
  const Settings settings;
  expectDefaults(settings);
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, ABlankLineInsideASectionResetsEveryValue) {
  write(
      replaced(replaced(tests::kDefaultSettings, "= 20000", "= 77777"), "\trotSensBase", "\n\trotSensBase"));
  const Settings settings;
  expectDefaults(settings);
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, AFileOfWindowsLineEndsIsRead) {
  std::string text;
  for (const char c : replaced(tests::kDefaultSettings, "= 20000", "= 77777"))
    text += c == '\n' ? std::string("\r\n") : std::string(1, c);
  write(text);
  EXPECT_EQ(Settings().transSensBase(), 77777);
}

}  // namespace
