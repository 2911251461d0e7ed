#include <gmock/gmock.h>

#include <algorithm>
#include <sstream>
#include <vector>

#include "LM_Daemon/src/logging.h"
#include "tests/settings/settings_fixture.h"
#include "util/threads.h"

namespace {

using testing::ElementsAre;

/// Columns before the text of a line of this thread in the log; its number takes the room it needs.
const std::size_t kPrefixWidth = 76 + std::max<std::size_t>(6, std::to_string(currentThreadId()).size());

class SettingsLog : public SettingsTest {
 protected:
  SettingsLog() {
    LogPars pars;
    pars.mLogFile = mProfile.path("a.log");
    pars.mIsTrace = true;
    pars.mIsInfo = false;
    mLog.init(pars);
  }

  /// Type and text of each entry behind the header.
  std::vector<std::string> entries() const {
    std::istringstream stream(mProfile.read("a.log"));
    std::vector<std::string> result;
    std::string line;
    for (int i = 0; std::getline(stream, line); ++i)
      if (i >= 5 && line.size() >= kPrefixWidth)
        result.push_back(line.substr(13, 4) + line.substr(kPrefixWidth));
    return result;
  }

  Logging mLog;
};

TEST_F(SettingsLog, TellsOfConstructionAndDestruction) {
  write(kDefaultFile);
  { const Settings settings; }
  EXPECT_THAT(entries(), ElementsAre("CRT|Constructing ...", "CRT|Constructed.",
                                     "TRC|Writing new default settings file ...",
                                     "TRC|Default settings file written.", "CRT|Destructed."));
}

TEST_F(SettingsLog, TellsOfAMissingFile) {
  LogPars pars;
  pars.mLogFile = mProfile.path("b.log");
  pars.mIsCreation = false;
  mLog.init(pars);
  const Settings settings;
  EXPECT_NE(mProfile.read("b.log").find("| Settings file not found - using default values ...\n"),
            std::string::npos);
}

TEST_F(SettingsLog, TellsEveryMissingKeyAndThatReadingFailed) {
  write(kDefaultFile);
  Settings settings;
  mProfile.write("a.log", "");
  mProfile.write("c.ini", replaced(replaced(kDefaultFile, "\tname ", "\tnaem "), "[LOGGING]", "[LOG]"));
  settings.readSettingsFile(mProfile.path("c.ini"));
  const std::string log = mProfile.read("a.log");
  EXPECT_NE(log.find("| Parameter 'name' in section 'PROGRAM' not found! (" + mProfile.path("c.ini") + ")\n"),
            std::string::npos);
  EXPECT_NE(log.find("| Section 'LOGGING' not found!\n"), std::string::npos);
  EXPECT_EQ(log.substr(log.size() - 31), "| Error reading settings file!\n");
}

TEST_F(SettingsLog, TellsOfAFileThatCannotBeWritten) {
  write(kDefaultFile);
  Settings settings;
  mProfile.write("a.log", "");
  settings.writeSettingsFile(mProfile.path("none\\x.ini"));
  const std::string log = mProfile.read("a.log");
  EXPECT_NE(log.find("|ERR|"), std::string::npos);
  EXPECT_NE(log.find("| Writing default settings file 'autocad_addin.ini' failed!\n"), std::string::npos);
}

TEST_F(SettingsLog, TellsOfAMissingUserProfile) {
  tests::clearEnvironment("USERPROFILE");
  const Settings settings;
  EXPECT_THAT(entries(), testing::Contains("ERR|Environment variable USERPROFILE is not set!"));
}

TEST_F(SettingsLog, HoldsTheDumpAtInfoLevel) {
  LogPars pars;
  pars.mLogFile = mProfile.path("b.log");
  pars.mIsCreation = false;
  mLog.init(pars);
  write(kDefaultFile);
  const Settings settings;
  const std::string log = mProfile.read("b.log");
  EXPECT_NE(log.find("| \n" + settings.dump() + "\n"), std::string::npos);
}

TEST_F(SettingsLog, GetsItsDirectoryFromTheSettings) {
  const Settings settings;
  processLog().init(settings.logPars());
  EXPECT_TRUE(mProfile.has("Lumetrapad/autocad_addin_log.txt"));
  LogPars closed;
  closed.mIsLogToFile = false;
  processLog().init(closed);
}

}  // namespace
