#include "LM_Daemon/src/logging.h"
#include "config/cnfg.h"
#include "tests/settings/settings_fixture.h"
#include "util/threads.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

using testing::ElementsAre;

/// Columns before the text of a line of this thread in the log; its number takes the room it needs.
const std::size_t kPrefixWidth = 76 + std::max<std::size_t>(6, std::to_string(currentThreadId()).size());

class SettingsLog : public SettingsTest {
 protected:
  SettingsLog() {
    mPars.mLogFile = mProfile.path("a.log");
    mPars.mIsTrace = true;
    mPars.mIsInfo = false;
    mLog.init(mPars);
    mIgnored = allLines();
  }

  void initAllLevels() {
    mPars.mIsInfo = true;
    mLog.init(mPars);
    mIgnored = allLines();
  }

  std::size_t allLines() const {
    const std::string text = mProfile.read("a.log");
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  }

  /// The lines after those that are ignored, without the dump's own.
  std::vector<std::string> lines() const {
    std::istringstream stream(mProfile.read("a.log"));
    std::vector<std::string> result;
    std::string line;
    for (std::size_t i = 0; std::getline(stream, line); ++i)
      if (i >= mIgnored && line.size() >= kPrefixWidth && line[12] == '|' && line[2] == ':')
        result.push_back(line);
    return result;
  }

  /// Type and text of each of them.
  std::vector<std::string> entries() const {
    std::vector<std::string> result;
    for (const std::string& line : lines()) result.push_back(line.substr(13, 4) + line.substr(kPrefixWidth));
    return result;
  }

  LogPars mPars;
  std::size_t mIgnored = 0;
  Logging mLog;
};

TEST_F(SettingsLog, LogReportsConstructionAndDestruction) {
  write(tests::kDefaultSettings);
  { const Settings settings; }
  EXPECT_THAT(entries(), ElementsAre("CRT|Constructing ...", "CRT|Constructed.",
                                     "TRC|Writing new default settings file ...",
                                     "TRC|Default settings file written.", "CRT|Destructed."));
}

TEST_F(SettingsLog, LogReportsTheWholeWayToTheDefaults) {
  initAllLevels();
  const Settings settings;
  EXPECT_THAT(entries(),
              ElementsAre("CRT|Constructing ...", "INF|Settings file not found - using default values ...",
                          "TRC|Writing new default settings file ...", "TRC|Default settings file written.",
                          "INF|", "CRT|Constructed."));
}

TEST_F(SettingsLog, LogReportsTheSameOfAnIncompleteFile) {
  initAllLevels();
  write(replaced(tests::kDefaultSettings, "\tname ", "\tnaem "));
  const Settings settings;
  EXPECT_THAT(entries(), ElementsAre("CRT|Constructing ...",
                                     "ERR|Parameter 'name' in section 'PROGRAM' not found! (" +
                                         settings.settingsFilePath() + ")",
                                     "ERR|Error reading settings file!",
                                     "INF|Settings file not found - using default values ...",
                                     "TRC|Writing new default settings file ...",
                                     "TRC|Default settings file written.", "INF|", "CRT|Constructed."));
}

TEST_F(SettingsLog, LogReportsEveryMissingKeyAndThatReadingFailed) {
  write(tests::kDefaultSettings);
  Settings settings;
  mLog.init(mPars);
  const std::string path = mProfile.path("c.ini");
  std::string text = replaced(tests::kDefaultSettings, "\tversion ", "\tnoisrev ");
  mProfile.write("c.ini", replaced(replaced(text, "\tname ", "\tnaem "), "\tfileToLog", "\tx"));
  mIgnored = allLines();
  settings.readSettingsFile(path);
  EXPECT_THAT(entries(),
              ElementsAre("ERR|Parameter 'name' in section 'PROGRAM' not found! (" + path + ")",
                          "ERR|Parameter 'version' in section 'PROGRAM' not found! (" + path + ")",
                          "ERR|Parameter 'fileToLog' in section 'LOGGING' not found! (" + path + ")",
                          "ERR|Error reading settings file!"));
}

TEST_F(SettingsLog, LogNamesTheOperationsOfTheEntries) {
  write(replaced(tests::kDefaultSettings, "\tname ", "\tnaem "));
  { const Settings settings; }
  std::vector<std::string> methods;
  for (const std::string& line : lines()) methods.push_back(line.substr(kPrefixWidth - 34, 32));
  EXPECT_THAT(methods, ElementsAre("Settings::Settings::Settings    ", "*ttings::Settings::readParameter",
                                   "*ngs::Settings::readSettingsFile", "*gs::Settings::writeSettingsFile",
                                   "*gs::Settings::writeSettingsFile", "Settings::Settings::Settings    ",
                                   "*gs::Settings::writeSettingsFile", "*gs::Settings::writeSettingsFile",
                                   "Settings::Settings::~Settings   "));
}

TEST_F(SettingsLog, LogNamesTheOperationOfEveryErrorAndOfTheDump) {
  initAllLevels();
  tests::clearEnvironment("USERPROFILE");
  Settings settings;
  settings.writeSettingsFile(mProfile.path("none\\x.ini"));
  std::vector<std::string> methods;
  for (const std::string& line : lines())
    if (line.substr(13, 3) != "TRC")
      methods.push_back(line.substr(13, 4) + line.substr(kPrefixWidth - 34, 32));
  EXPECT_THAT(methods, testing::IsSupersetOf(
                           {"ERR|Settings::Settings::Settings    ", "ERR|*gs::Settings::writeSettingsFile"}));
  EXPECT_THAT(methods, testing::Each(testing::AnyOf(testing::HasSubstr("Settings::Settings::Settings    "),
                                                    testing::HasSubstr("::writeSettingsFile"))));
}

TEST_F(SettingsLog, LogReportsMissingKeysOfBothSections) {
  write(replaced(replaced(tests::kDefaultSettings, "\tname ", "\tnaem "), "\tfileToLog", "\tx"));
  const Settings settings;
  EXPECT_THAT(entries(), testing::Contains("ERR|Error reading settings file!"));
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

/// Lets a test call what only the settings themselves use, and choose the section of the log.
class OpenSettings : public Settings {
 public:
  using Settings::readNextParameter;
  void setLogSection(const char* nameP) { mLogPars.mSectionName = nameP; }
};

TEST_F(SettingsLog, LogReportsThatASectionHasNoFurtherParameter) {
  write(tests::kDefaultSettings);
  const OpenSettings settings;
  mIgnored = allLines();
  mProfile.write("c.ini", "[A]\nk= 1 \n\n");
  Cnfg cnfg;
  cnfg.open(mProfile.path("c.ini"));
  cnfg.findSection("A");
  std::string key, value;
  EXPECT_EQ(OpenSettings::readNextParameter(cnfg, key, value), 0);
  EXPECT_EQ(key + value, "k1");
  EXPECT_EQ(OpenSettings::readNextParameter(cnfg, key, value), 4);
  EXPECT_THAT(entries(), ElementsAre("ERR|No further parameter in section 'A'!"));
  EXPECT_THAT(lines()[0].substr(0, kPrefixWidth), testing::EndsWith("gs::Settings::readNextParameter| "));
}

TEST_F(SettingsLog, LogParametersAreInTheSectionThatIsNamed) {
  write(tests::kDefaultSettings);
  OpenSettings settings;
  settings.setLogSection("OTHER");
  mProfile.write("c.ini",
                 replaced(replaced(tests::kDefaultSettings, "[LOGGING]", "[OTHER]"), "= 5000", "= 7777"));
  EXPECT_EQ(settings.readSettingsFile(mProfile.path("c.ini")), 0);
  EXPECT_EQ(settings.logPars().mMaxSize, 7777);
  settings.writeSettingsFile(mProfile.path("d.ini"));
  EXPECT_NE(mProfile.read("d.ini").find("\n\n[OTHER]\n\tlogFile "), std::string::npos);
}

TEST_F(SettingsLog, LogReportsAFileThatCannotBeWritten) {
  write(tests::kDefaultSettings);
  Settings settings;
  mProfile.write("a.log", "");
  settings.writeSettingsFile(mProfile.path("none\\x.ini"));
  const std::string log = mProfile.read("a.log");
  EXPECT_NE(log.find("|ERR|"), std::string::npos);
  EXPECT_NE(log.find("| Writing default settings file 'autocad_addin.ini' failed!\n"), std::string::npos);
}

TEST_F(SettingsLog, LogReportsAMissingUserProfile) {
  tests::clearEnvironment("USERPROFILE");
  const Settings settings;
  EXPECT_THAT(entries(), testing::Contains("ERR|Environment variable USERPROFILE is not set!"));
}

TEST_F(SettingsLog, LogHoldsTheDumpAtInfoLevel) {
  LogPars pars;
  pars.mLogFile = mProfile.path("b.log");
  pars.mIsCreation = false;
  mLog.init(pars);
  write(tests::kDefaultSettings);
  const Settings settings;
  const std::string log = mProfile.read("b.log");
  EXPECT_NE(log.find("| \n" + settings.dump() + "\n"), std::string::npos);
}

TEST_F(SettingsLog, LogGetsItsDirectoryFromTheSettings) {
  const Settings settings;
  processLog().init(settings.logPars());
  EXPECT_TRUE(mProfile.has("Lumetrapad/autocad_addin_log.txt"));
  LogPars closed;
  closed.mIsLogToFile = false;
  processLog().init(closed);
}

}  // namespace
