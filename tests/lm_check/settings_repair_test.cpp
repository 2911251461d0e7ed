#include "packaging/lm_check/settings_repair.h"

#include "common_sources/settings.h"
#include "packaging/lm_check/profile.h"
#include "packaging/lm_check/settings_check.h"
#include "tests/lm_check/finding_texts.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"
#include "util/native_file.h"

#include <gmock/gmock.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using tests::kDefaultSettings;
using tests::replaced;
using tests::settingsText;

/// Values that are none of the defaults, so that one that got lost shows.
const tests::SettingsChanges kMine = {{"name", "Mine"},
                                      {"version", "3.1"},
                                      {"transSensBase", "15000"},
                                      {"rotSensBase", "-8000"},
                                      {"minThreshold", "12"},
                                      {"maxContMoveTime", "300"},
                                      {"toggleRotationCenter", "off"},
                                      {"toggleRotationAxis", "on"},
                                      {"scrollTreeAndList", "off"},
                                      {"useInt3dIntrfce", "on"},
                                      {"logFile", "my_log.txt"},
                                      {"maxSize", "77"},
                                      {"logToFile", "on"},
                                      {"logToCnsl", "on"},
                                      {"warning", "on"},
                                      {"creation", "off"},
                                      {"trace", "on"},
                                      {"devcom", "on"},
                                      {"intcom", "on"},
                                      {"info", "off"},
                                      {"debug", "on"},
                                      {"tmp", "on"},
                                      {"fileToLog", "settings.cpp"}};

std::string mine() {
  return settingsText(kMine);
}

std::string lineOf(const std::string& text, const std::string& key) {
  const std::size_t start = text.find("\t" + key + " ");
  return text.substr(start, text.find('\n', start) + 1 - start);
}

/// The file with another line for a key.
std::string withLine(const std::string& key, const std::string& line) {
  return replaced(mine(), lineOf(mine(), key), line);
}

std::string without(const std::string& part) {
  return replaced(mine(), part, "");
}

std::string utf16(const std::string& text) {
  std::string result("\xFF\xFE", 2);
  for (const char c : text) (result += c) += '\0';
  return result;
}

std::string withoutEmptyLines(std::string text) {
  for (std::size_t at; (at = text.find("\n\n")) != std::string::npos;) text.erase(at, 1);
  return text;
}

std::string everyLine(const std::string& before, const std::string& after) {
  std::string text, rest = mine();
  while (!rest.empty()) {
    const std::size_t end = rest.find('\n');
    text += before + rest.substr(0, end) + after + "\n";
    rest.erase(0, end + 1);
  }
  return text;
}

struct Defective {
  std::string name;
  std::string text;
  tests::SettingsChanges differences;  ///< of the repaired file from kMine
};

/// What an absent section's settings become.
const tests::SettingsChanges kNoProgram = {{"name", "AutoCAD Plug-in"},    {"version", "2.9.0"},
                                           {"transSensBase", "20000"},     {"rotSensBase", "10000"},
                                           {"minThreshold", "0"},          {"maxContMoveTime", "500"},
                                           {"toggleRotationCenter", "on"}, {"toggleRotationAxis", "off"},
                                           {"scrollTreeAndList", "on"},    {"useInt3dIntrfce", "off"}};
const tests::SettingsChanges kNoLogging = {{"logFile", "autocad_addin_log.txt"},
                                           {"maxSize", "5000"},
                                           {"logToFile", "on"},
                                           {"logToCnsl", "off"},
                                           {"warning", "off"},
                                           {"creation", "on"},
                                           {"trace", "off"},
                                           {"devcom", "off"},
                                           {"intcom", "off"},
                                           {"info", "on"},
                                           {"debug", "off"},
                                           {"tmp", "off"},
                                           {"fileToLog", ""}};

std::string programSection() {
  const std::size_t start = mine().find("[PROGRAM]");
  return mine().substr(start, mine().find("\n[LOGGING]") - start);
}

std::string loggingSection() {
  return mine().substr(mine().find("[LOGGING]"));
}

using DefectiveFiles = std::vector<Defective>;

DefectiveFiles filesWithMissingParts() {
  tests::SettingsChanges nothing = kNoProgram;
  nothing.insert(kNoLogging.begin(), kNoLogging.end());
  return {
      {"NoFirstKey", without(lineOf(mine(), "name")), {{"name", "AutoCAD Plug-in"}}},
      {"NoMiddleKey", without(lineOf(mine(), "maxSize")), {{"maxSize", "5000"}}},
      {"NoLastKey", without(lineOf(mine(), "fileToLog")), {{"fileToLog", ""}}},
      {"NoProgramSection", replaced(mine(), programSection(), ""), kNoProgram},
      {"NoLoggingSection", replaced(mine(), loggingSection(), ""), kNoLogging},
      {"Empty", "", nothing},
      {"NothingButText", "hello\nthere\n", nothing},
  };
}

DefectiveFiles filesWithOtherLines() {
  return {
      {"EmptyLineAtTheStart", replaced(mine(), "[PROGRAM]\n", "[PROGRAM]\n\n"), {}},
      {"EmptyLineInside", withLine("minThreshold", "\n" + lineOf(mine(), "minThreshold")), {}},
      {"EmptyLinesEverywhere", everyLine("", "\n"), {}},
      {"BlankLineInside", withLine("debug", " \t \n" + lineOf(mine(), "debug")), {}},
      {"IndentedComment", withLine("debug", "  # mine\n" + lineOf(mine(), "debug")), {}},
  };
}

DefectiveFiles filesWithOtherSections() {
  return {
      {"NoHeaders", replaced(replaced(mine(), "[PROGRAM]\n", ""), "[LOGGING]\n", ""), {}},
      {"BrokenProgramHeader", replaced(mine(), "[PROGRAM]", "[PROGRAM"), {}},
      {"BrokenLoggingHeader", replaced(mine(), "[LOGGING]", "LOGGING]"), {}},
      {"HeaderWithBlanks", replaced(mine(), "[PROGRAM]", "[ PROGRAM ]"), {}},
      {"HeaderInSmallLetters", replaced(mine(), "[LOGGING]", "[logging]"), {}},
      {"HeadersSwapped", replaced(replaced(mine(), "[PROGRAM]", "[LOGGING_]"), "[LOGGING]", "[PROGRAM]"), {}},
      {"SectionsSwapped", loggingSection() + "\n" + programSection() + "\n" + "[END\n", {}},
      {"OneSection", replaced(mine(), "\n[LOGGING]\n", ""), {}},
      {"SectionTwice",
       replaced(mine(), lineOf(mine(), "minThreshold"), "") + "\n[PROGRAM]\nminThreshold = 12\n",
       {}},
  };
}

DefectiveFiles filesWithOtherKeys() {
  return {
      {"KeyInTheOtherSection", without(lineOf(mine(), "tmp")) + "[PROGRAM]\ntmp = on\n", {}},
      {"KeyTwice", withLine("minThreshold", "minThreshold = 12\nminThreshold = 13\nnosuch\n = 4\n"), {}},
      {"KeyInCapitals", withLine("minThreshold", "MINTHRESHOLD = 12\n"), {}},
      {"KeyWithoutSeparator", withLine("minThreshold", "minThreshold 12 # mine\n"), {}},
      {"KeyWithColon", withLine("minThreshold", "minThreshold: 12\n"), {}},
      {"KeyAlone", withLine("minThreshold", "minThreshold\n = 1\n"), {{"minThreshold", "0"}}},
      {"SeparatorFirst", withLine("minThreshold", "= minThreshold\n"), {{"minThreshold", "0"}}},
  };
}

DefectiveFiles filesWithOtherValues() {
  return {
      {"NumberWithLetters", withLine("minThreshold", "minThreshold = 12 units\n\n"), {}},
      {"WordForANumber", withLine("minThreshold", "minThreshold = twelve\n\n"), {{"minThreshold", "0"}}},
      {"DivisorOfNought", withLine("rotSensBase", "rotSensBase = 0\n\n"), {{"rotSensBase", "10000"}}},
      {"NegativeTime", withLine("maxContMoveTime", "maxContMoveTime = -1\n\n"), {{"maxContMoveTime", "500"}}},
      {"NumberTooLarge", withLine("maxSize", "maxSize = 99999999999\n\n"), {{"maxSize", "2147483647"}}},
      {"SwitchInCapitals", withLine("trace", "trace = ON\n\n"), {}},
      {"SwitchInAnotherWord", withLine("creation", "creation = False\n\n"), {}},
      {"SwitchThatSaysNothing", withLine("trace", "trace = # off\n\n"), {{"trace", "off"}}},
  };
}

DefectiveFiles filesOfOtherBytes() {
  return {
      {"ByteOrderMark", "\xEF\xBB\xBF" + withoutEmptyLines(mine()).substr(mine().find('\n') + 1), {}},
      {"Utf16", utf16(mine()), {}},
      {"CutShort",
       mine().substr(0, mine().find("\tinfo")) + "\tin",
       {{"info", "on"}, {"debug", "off"}, {"tmp", "off"}, {"fileToLog", ""}}},
      {"CommentedOut", withLine("minThreshold", "#\tminThreshold = 12\n"), {{"minThreshold", "0"}}},
      {"NulInside", withLine("minThreshold", std::string("minThreshold = 12\0\n\n", 19)), {}},
  };
}

DefectiveFiles defectiveFiles() {
  DefectiveFiles all;
  for (const DefectiveFiles& some : {filesWithMissingParts(), filesWithOtherLines(), filesWithOtherSections(),
                                     filesWithOtherKeys(), filesWithOtherValues(), filesOfOtherBytes()})
    all.insert(all.end(), some.begin(), some.end());
  return all;
}

void PrintTo(const Defective& defective, std::ostream* streamP) {
  *streamP << defective.name;
}

class SettingsRepair : public ::testing::TestWithParam<Defective> {};

std::string repaired(const UserProfile& profile, const std::string& text) {
  profile.writeSettings(text);
  const Profile places(profile.root().string());
  const auto result = repairSettings(places.settingsFile);
  if (!result || !replaceFile(places.repairedFile, result->text)) return "not repaired";
  return profile.read("Lumetrapad/Applications/autocad_addin.repaired.ini");
}

TEST_P(SettingsRepair, RepairKeepsWhatCanBeReadAndIsTakenWithoutAReset) {
  const UserProfile profile;
  tests::SettingsChanges expected = kMine;
  for (const auto& [key, value] : GetParam().differences) expected[key] = value;
  const std::string text = repaired(profile, GetParam().text);
  EXPECT_EQ(text, settingsText(expected));
  // The module itself takes the file as it is.
  profile.writeSettings(text);
  EXPECT_EQ(Settings().readSettingsFile(Profile(profile.root().string()).settingsFile), 0);
  EXPECT_EQ(profile.settings(), text);
}

TEST_P(SettingsRepair, DefectiveFileNeedsARepair) {
  const UserProfile profile;
  profile.writeSettings(GetParam().text);
  EXPECT_FALSE(checkSettings(Profile(profile.root().string())).empty());
}

INSTANTIATE_TEST_SUITE_P(All, SettingsRepair, ::testing::ValuesIn(defectiveFiles()),
                         [](const ::testing::TestParamInfo<Defective>& defective) {
                           return defective.param.name;
                         });

TEST(SettingsRepairText, WholeFileStaysAsItIs) {
  const UserProfile profile;
  EXPECT_EQ(repaired(profile, kDefaultSettings), kDefaultSettings);
}

TEST(SettingsRepairText, ChangesAreReported) {
  const UserProfile profile;
  profile.writeSettings(
      replaced(settingsText({{"trace", "YES"}, {"rotSensBase", "0"}}), "maxSize ", "maxSice "));
  EXPECT_THAT(repairSettings(Profile(profile.root().string()).settingsFile)->changes,
              ElementsAre("'rotSensBase' was '0' in line 7 and is now '10000'.",
                          "'maxSize' was missing and is now '5000'.",
                          "'trace' was 'YES' in line 22 and is now 'on'."));
}

TEST(SettingsRepairText, FileThatCannotBeOpenedIsNotRepaired) {
  EXPECT_FALSE(repairSettings("/nowhere/autocad_addin.ini"));
}

}  // namespace
