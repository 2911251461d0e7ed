#include "tests/settings/settings_fixture.h"

#include <fstream>

namespace {

TEST_F(SettingsTest, WithoutTheFoldersTheDefaultsHoldAndNoFolderIsMade) {
  std::filesystem::remove_all(mProfile.root() / "Lumetrapad");
  {
    Settings settings;
    EXPECT_EQ(settings.transSensBase(), 20000);
    EXPECT_EQ(settings.writeSettingsFile(settings.settingsFilePath()), -1);
  }
  EXPECT_FALSE(mProfile.has("Lumetrapad"));
}

TEST_F(SettingsTest, WithoutAUserProfileTheDefaultsHold) {
  tests::clearEnvironment("USERPROFILE");
  const Settings settings;
  EXPECT_EQ(settings.userProfileDir(), "");
  EXPECT_EQ(settings.settingsDirPath(), "\\Lumetrapad");
  EXPECT_EQ(settings.transSensBase(), 20000);
}

TEST_F(SettingsTest, AFileThatCannotBeOpenedChangesNoValue) {
  Settings settings;
  settings.setTransSensBase(5);
  EXPECT_EQ(settings.readSettingsFile(mProfile.path("none.ini")), -1);
  EXPECT_EQ(settings.transSensBase(), 5);
}

TEST_F(SettingsTest, AnIncompleteFileIsReported) {
  Settings settings;
  mProfile.write("a.ini", "[PROGRAM]\n");
  EXPECT_EQ(settings.readSettingsFile(mProfile.path("a.ini")), -2);
}

TEST_F(SettingsTest, AFolderInThePlaceOfTheFileLeavesTheDefaults) {
  std::filesystem::create_directory(mProfile.root() / kSettingsFile);
  { EXPECT_EQ(Settings().maxContMoveTime(), 500); }
  EXPECT_TRUE(std::filesystem::is_directory(mProfile.root() / kSettingsFile));
}

TEST_F(SettingsTest, AFileThatCannotBeReplacedIsReported) {
  Settings settings;
  EXPECT_EQ(settings.writeSettingsFile("\\dev\\full"), -1);
  EXPECT_EQ(file(), tests::kDefaultSettings);
}

TEST_F(SettingsTest, AFileOfHundredMegabytesIsReadAndReplaced) {
  const std::string text = replaced(tests::kDefaultSettings, "= 20000", "= 77777");
  write(text);
  std::filesystem::resize_file(mProfile.root() / kSettingsFile, 100u << 20);
  { EXPECT_EQ(Settings().transSensBase(), 77777); }
  EXPECT_EQ(file(), text);
}

TEST_F(SettingsTest, ALineOfTenMegabytesIsRead) {
  write(replaced(tests::kDefaultSettings, "= 2.9.0", "= " + std::string(10u << 20, 'v')));
  EXPECT_EQ(Settings().version().size(), 10u << 20);
}

TEST_F(SettingsTest, NulBytesAreReadAndWrittenBack) {
  using namespace std::string_literals;
  write(replaced(tests::kDefaultSettings, "AutoCAD Plug-in", "AutoCAD\0Plug-in"s));
  { EXPECT_EQ(Settings().name(), "AutoCAD\0Plug-in"s); }
  EXPECT_EQ(file(), replaced(tests::kDefaultSettings, "AutoCAD Plug-in", "AutoCAD\0Plug-in"s));
}

TEST_F(SettingsTest, AFileWithoutAFinalNewlineIsRead) {
  write(
      replaced(tests::kDefaultSettings, "= 20000", "= 77777").substr(0, tests::kDefaultSettings.size() - 1));
  EXPECT_EQ(Settings().transSensBase(), 77777);
}

}  // namespace
