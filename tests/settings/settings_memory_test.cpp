// What the settings do when there is no memory to write them.
#include "LM_Daemon/src/logging.h"
#include "tests/settings/settings_fixture.h"
#include "tests/support/allocations.h"

#include <optional>

namespace {

class SettingsWithoutMemory : public SettingsTest {};

TEST_F(SettingsWithoutMemory, SettingsEndWithAFileThatIsWholeOldOrNew) {
  std::string newFile;
  bool isWritten = false;
  for (int left = 0; !isWritten; ++left) {
    ASSERT_LT(left, 2000) << "the file has never been written";
    write(tests::kDefaultSettings);
    std::optional<Settings> settings(std::in_place);
    settings->setTransSensBase(77777);
    {
      const tests::MemoryRunsOut memoryRunsOut(left);
      settings.reset();
    }
    newFile = file();
    isWritten = newFile != tests::kDefaultSettings;
  }
  EXPECT_EQ(newFile, replaced(tests::kDefaultSettings, "= 20000", "= 77777"));
}

TEST_F(SettingsWithoutMemory, SettingsReportThatTheyAreNotWritten) {
  write(tests::kDefaultSettings);
  LogPars pars;
  pars.mLogFile = mProfile.path("a.log");
  Logging log;
  log.init(pars);
  std::optional<Settings> settings(std::in_place);
  {
    const tests::MemoryRunsOut memoryRunsOut(0);
    settings.reset();
  }
  const std::string text = mProfile.read("a.log");
  const std::size_t end = text.find("| No memory to write the settings file!\n");
  ASSERT_NE(end, std::string::npos);
  const std::string start = text.substr(text.rfind('\n', end) + 1, end - text.rfind('\n', end) - 1);
  EXPECT_NE(start.find("|ERR|"), std::string::npos);
  EXPECT_NE(start.find("Settings::Settings::~Settings"), std::string::npos);
}

}  // namespace
