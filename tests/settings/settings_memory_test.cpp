// What the settings do when there is no memory to write them.
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

}  // namespace
