#include "packaging/lm_check/log_check.h"

#include "packaging/lm_check/settings_check.h"
#include "tests/lm_check/finding_texts.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gmock/gmock.h>

#include <ostream>
#include <string>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::settingsText;
using tests::textsOf;

const std::string kHeader =
    "------\nLumetra logfile 'autocad_addin_log.txt' opened at Mon Nov 16 2026\n------\n    Time    |Typ|\n";

std::string entry(const std::string& level, const std::string& text) {
  return "07:05:09.042|" + level + "|  4711|daemon_proxy.cpp|  62| DaemonProxy::DaemonProxy::connec| " +
         text + "\n";
}

Findings found(const UserProfile& profile, const tests::SettingsChanges& changes = {},
               ProfileKind kind = ProfileKind::kOwn) {
  profile.writeSettings(settingsText(changes));
  const Profile places(profile.root().string());
  return checkLog(places, EffectiveSettings(places.settingsFile), kind);
}

TEST(LogCheck, DefaultsHaveNoFindingsAndLeaveNoFile) {
  const UserProfile profile;
  EXPECT_THAT(textsOf(found(profile)), IsEmpty());
  EXPECT_FALSE(profile.has("Lumetrapad/autocad_addin_log.txt"));
}

TEST(LogCheck, NoisyLevelsAreNamed) {
  EXPECT_THAT(
      textsOf(found(UserProfile(), {{"trace", "on"}, {"tmp", "on"}})),
      ElementsAre(
          "Log: 'trace' is on and writes lines at every movement of the cap, so that older entries are "
          "soon lost; switch it off unless support asked for it.",
          "Log: 'tmp' is on and writes lines at every movement of the cap, so that older entries are "
          "soon lost; switch it off unless support asked for it."));
}

TEST(LogCheck, LogThatIsOffIsNamed) {
  EXPECT_THAT(textsOf(found(UserProfile(), {{"logToFile", "off"}})),
              ElementsAre("Log: 'logToFile' is off, so that no error is recorded; write 'on'."));
}

TEST(LogCheck, OneSourceFileIsNamed) {
  EXPECT_THAT(
      textsOf(found(UserProfile(), {{"fileToLog", "settings.cpp"}})),
      ElementsAre(
          "Log: 'fileToLog = settings.cpp' keeps all entries out but those of that source file, errors "
          "too; leave its value empty."));
}

TEST(LogCheck, MissingFolderIsNamed) {
  const UserProfile profile;
  const std::string folder = profile.path("nowhere");
  EXPECT_THAT(
      textsOf(found(profile, {{"logFile", folder + "\\a.txt"}})),
      ElementsAre("Log: its folder '" + folder +
                  "' is missing, and the module does not make it; make it, or write another 'logFile'."));
}

TEST(LogCheck, FileThatCannotBeWrittenIsNamed) {
  const UserProfile profile;
  std::filesystem::create_directory(profile / "Lumetrapad/autocad_addin_log.txt");
  EXPECT_THAT(
      textsOf(found(profile)),
      ElementsAre(
          "Log: '" + Profile(profile.root().string()).settingsFolder +
          "\\autocad_addin_log.txt' cannot be written, so that nothing is recorded; give the user the "
          "right to write there."));
}

TEST(LogCheck, CopysFullPathIsNotLookedFor) {
  EXPECT_THAT(textsOf(found(UserProfile(), {{"logFile", "D:\\logs\\a.txt"}}, ProfileKind::kCopy)), IsEmpty());
}

TEST(LogCheck, CopysLogIsFoundBesideTheRest) {
  const UserProfile profile;
  profile.write("Lumetrapad/a.txt", kHeader + entry("ERR", "Error in lmConnect()!"));
  EXPECT_THAT(textsOf(found(profile, {{"logFile", "D:\\logs\\a.txt"}}, ProfileKind::kCopy)).size(), 1u);
}

TEST(LogCheck, ErrorsAreCountedAndExplained) {
  const UserProfile profile;
  profile.write("Lumetrapad/autocad_addin_log.txt",
                kHeader + entry("ERR", "Error in lmConnect()!") + entry("CRT", "Constructed.") +
                    entry("ERR", "Error in lmConnect()!") + entry("ERR", "Error reading settings file!") +
                    "  a text that goes on|ERR| over lines\n");
  EXPECT_THAT(
      textsOf(found(profile)),
      ElementsAre(
          "Log: 'Error in lmConnect()!' 2 times since it was opened last: the driver was not running, or "
          "refused the connection; start the driver.",
          "Log: 'Error reading settings file!' once since it was opened last: the settings file was "
          "incomplete, and the module put its defaults in place; set your values again."));
}

TEST(LogCheck, ErrorsBeforeTheLastOpeningAreOver) {
  const UserProfile profile;
  profile.write("Lumetrapad/autocad_addin_log.txt",
                kHeader + entry("ERR", "Error in lmConnect()!") + kHeader + entry("ERR", "Error SetTimer()"));
  EXPECT_THAT(
      textsOf(found(profile)),
      ElementsAre("Log: 'Error SetTimer()' once since it was opened last: Windows gave the module no timer, "
                  "without which the cap does nothing; restart AutoCAD."));
}

TEST(LogCheck, UnknownErrorIsShown) {
  const UserProfile profile;
  profile.write("Lumetrapad/autocad_addin_log.txt", kHeader + entry("ERR", "something | else"));
  EXPECT_THAT(
      textsOf(found(profile)),
      ElementsAre(
          "Log: 'something | else' once since it was opened last: no explanation is known; send the log "
          "to support."));
}

/// Texts that the module logs as errors, each with the beginning of what the checker makes of it.
struct Known {
  std::string error;
  std::string meaning;
};

void PrintTo(const Known& known, std::ostream* streamP) {
  *streamP << known.error;
}

class LogCheckError : public ::testing::TestWithParam<Known> {};

TEST_P(LogCheckError, KnownErrorHasItsOwnExplanation) {
  const UserProfile profile;
  profile.write("Lumetrapad/autocad_addin_log.txt", kHeader + entry("ERR", GetParam().error));
  EXPECT_THAT(textsOf(found(profile)),
              ElementsAre("Log: '" + GetParam().error +
                          "' once since it was opened last: " + GetParam().meaning + "."));
}

INSTANTIATE_TEST_SUITE_P(
    All, LogCheckError,
    ::testing::Values(
        Known{"Error in lmGetDevNum()!", "the driver stopped answering; start it again"},
        Known{"Error in lmGetDevInfo()!", "the driver did not describe its device; plug the device in again"},
        Known{"Error in lmGetAdvancedSettings()!",
              "the driver did not give its advanced settings, so that the default rotation mode was taken; "
              "restart the "
              "driver"},
        Known{"Error in lmDisConnect()!",
              "the connection was lost before it was closed; nothing is to be done"},
        Known{"Error in lmDisconnect()!",
              "the connection was lost before it was closed; nothing is to be done"},
        Known{"Error creating reading thread!",
              "the module could not start a thread and does not connect anew; restart AutoCAD"},
        Known{"Writing default settings file 'autocad_addin.ini' failed!",
              "the settings file could not be written; give the user the right to write in the folder "
              "Applications"},
        Known{"Section 'PROGRAM' not found!",
              "this section was missing in the settings file, which the module then overwrote"},
        Known{"Parameter 'a' in section 'PROGRAM' not found! (x)",
              "this key was missing in the settings file, which the module then overwrote"},
        Known{"Setting 'rotSensBase' is 0, 10000 is used!",
              "the value cannot be used; correct it in the settings file"},
        Known{"Environment variable USERPROFILE is not set!",
              "the environment has no USERPROFILE, so that the module found neither settings nor menu"},
        Known{"Error: MenuScriber does not exist C:\\a.dll",
              "the menu exporter is not beside the module, so that no menu file is written; repair the "
              "installation"},
        Known{"Error: Invalid path a.arx",
              "the module's own path has no folder, so that the menu exporter was not found"},
        Known{"keyEvent (9') too big (max. is 3)!",
              "a key is set to a menu item that the menu file does not have; choose its item anew"},
        Known{"Unknown special command '131080' found!",
              "the driver sent a function that this version does not know; update the plug-in"},
        Known{"'C:\\a.bak' couldn't be removed!",
              "the old backup of the log could not be deleted; close what shows it"},
        Known{"Opening of stream of'C:\\a.txt' failed!",
              "the log could not be opened again after its backup; look at the rights in its folder"},
        Known{"AcGsView object could not be retrieved!",
              "AutoCAD did not give the module its view; try another viewport or drawing"},
        Known{"Error moveXYZ()",
              "an operation failed in AutoCAD and was passed over; send the log to support if it happens "
              "often"}));

}  // namespace
