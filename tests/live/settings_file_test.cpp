#include "workbench/running/settings_file.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

constexpr const char* kFile =
    "# Title = none\n\n[PROGRAM]\n\tname          = Plug-in   # program's name\n\tlimit=5\r\n[LOGGING]\n"
    "\tfile          =           # no name\n";

TEST(SettingsFile, LinesHaveSectionValueAndComment) {
  const auto lines = settingLines(kFile);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0].section, "PROGRAM");
  EXPECT_EQ(lines[0].key, "name");
  EXPECT_EQ(lines[0].value, "Plug-in");
  EXPECT_EQ(lines[0].comment, "program's name");
  EXPECT_EQ(lines[1].value, "5");
  EXPECT_EQ(lines[1].comment, "");
  EXPECT_EQ(lines[2].section, "LOGGING");
  EXPECT_EQ(lines[2].value, "");
}

TEST(SettingsFile, ValueIsReplacedWithinItsColumn) {
  const auto changed = withSetting("[A]\n\tname  = old     # note\n\tother = 1\n", "name", "newer");
  EXPECT_EQ(changed, "[A]\n\tname  = newer   # note\n\tother = 1\n");
}

TEST(SettingsFile, LongerValueMovesTheComment) {
  EXPECT_EQ(withSetting("a = 1 # note\n", "a", "123456"), "a = 123456 # note\n");
}

TEST(SettingsFile, UnknownKeyChangesNothing) {
  EXPECT_FALSE(withSetting(kFile, "nam", "x"));
  EXPECT_FALSE(withSetting(kFile, "# Title", "x"));
}

}  // namespace
}  // namespace workbench
