#include "packaging/lm_check/settings_check.h"

#include "tests/lm_check/finding_texts.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gmock/gmock.h>

#include <ostream>
#include <string>
#include <vector>

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using tests::kDefaultSettings;
using tests::replaced;
using tests::settingsText;
using tests::textsOf;

const std::string kReset =
    "Settings: the module would take none of the values of this file, work with its defaults and overwrite "
    "it with "
    "them when AutoCAD starts; put a repaired file in its place first (lm_check --fix writes one).";

/// What is found in a file of that text.
Findings found(const std::string& text) {
  const UserProfile profile;
  profile.writeSettings(text);
  return checkSettings(Profile(profile.root().string()));
}

std::string missing(const std::string& key, const std::string& section, const std::string& defaultValue) {
  return "Settings: the key '" + key + "' of the section '[" + section +
         "]' is missing, or the module cannot reach it; its default is '" + defaultValue + "'.";
}

/// The line of a key in the default file, with its end.
std::string lineOf(const std::string& key) {
  const std::size_t start = kDefaultSettings.find("\t" + key + " ");
  return kDefaultSettings.substr(start, kDefaultSettings.find('\n', start) + 1 - start);
}

TEST(SettingsCheck, DefaultFileHasNoFindings) {
  EXPECT_THAT(textsOf(found(kDefaultSettings)), IsEmpty());
}

TEST(SettingsCheck, FileOfWindowsLinesHasNoFindings) {
  std::string text;
  for (const char c : kDefaultSettings) text += c == '\n' ? "\r\n" : std::string(1, c);
  EXPECT_THAT(textsOf(found(text)), IsEmpty());
}

TEST(SettingsCheck, MissingFileIsNamed) {
  const UserProfile profile;
  const Profile places(profile.root().string());
  EXPECT_THAT(
      textsOf(checkSettings(places)),
      ElementsAre(
          "Settings: there is no file '" + places.settingsFile +
          "', which the module writes when it is loaded for the first time. Start AutoCAD; if the file "
          "is still missing then, the module is not loaded."));
}

TEST(SettingsCheck, FolderInTheFilesPlaceIsNamed) {
  const UserProfile profile;
  std::filesystem::create_directory(profile.applications() / "autocad_addin.ini");
  const Profile places(profile.root().string());
  EXPECT_THAT(
      textsOf(checkSettings(places)),
      ElementsAre(
          "Settings: '" + places.settingsFile +
          "' cannot be opened, so that the module works with its defaults; give the user the right to "
          "read and write it."));
}

TEST(SettingsCheck, MissingKeyResetsTheFile) {
  EXPECT_THAT(textsOf(found(replaced(kDefaultSettings, lineOf("minThreshold"), ""))),
              ElementsAre(missing("minThreshold", "PROGRAM", "0"), kReset));
}

TEST(SettingsCheck, EmptyLineHidesWhatFollows) {
  const std::string line = lineOf("scrollTreeAndList");
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, line, "\n" + line))),
      ElementsAre(
          "Settings: line 12: an empty line ends the section '[PROGRAM]' for the module, which does not "
          "read what follows in it (scrollTreeAndList, useInt3dIntrfce); remove the line.",
          missing("scrollTreeAndList", "PROGRAM", "on"), missing("useInt3dIntrfce", "PROGRAM", "off"),
          kReset));
}

TEST(SettingsCheck, IndentedCommentHidesWhatFollows) {
  const std::string line = lineOf("fileToLog");
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, line, "\t# mine\n" + line))),
      ElementsAre(
          "Settings: line 28: a comment that does not begin in the first column ends the section "
          "'[LOGGING]' for the module, which does not read what follows in it (fileToLog); remove the "
          "line.",
          missing("fileToLog", "LOGGING", ""), kReset));
}

TEST(SettingsCheck, CommentInTheFirstColumnIsNoFinding) {
  const std::string line = lineOf("fileToLog");
  EXPECT_THAT(textsOf(found(replaced(kDefaultSettings, line, "# mine\n" + line))), IsEmpty());
}

TEST(SettingsCheck, LineWithoutKeyHidesWhatFollows) {
  const std::string line = lineOf("fileToLog");
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, line, "\t= 5\n" + line))),
      ElementsAre(
          "Settings: line 28: '= 5' has no key before the '='; remove the line.",
          "Settings: line 28: a line without a key ends the section '[LOGGING]' for the module, which "
          "does not read what follows in it (fileToLog); remove the line.",
          missing("fileToLog", "LOGGING", ""), kReset));
}

TEST(SettingsCheck, HeaderWithoutBracketIsNamed) {
  const auto texts = textsOf(found(replaced(kDefaultSettings, "[LOGGING]", "[LOGGING")));
  EXPECT_EQ(texts.front(),
            "Settings: line 15: '[LOGGING' has no ']', so that the module sees no section there; close the "
            "bracket.");
  EXPECT_EQ(texts.back(), kReset);
}

TEST(SettingsCheck, HeaderWithBlanksIsNoHeader) {
  EXPECT_EQ(
      textsOf(found(replaced(kDefaultSettings, "[PROGRAM]", "[ PROGRAM ]"))).front(),
      "Settings: line 3: the section '[ PROGRAM ]' is none that the module knows; it reads [PROGRAM] and "
      "[LOGGING], written exactly so.");
}

TEST(SettingsCheck, SecondSectionIsNamed) {
  EXPECT_THAT(
      textsOf(found(kDefaultSettings + "[PROGRAM]\nminThreshold = 3\n")),
      ElementsAre(
          "Settings: line 29: the section '[PROGRAM]' is there before; the module reads the first one "
          "only. Put both together."));
}

TEST(SettingsCheck, KeyBeforeTheFirstSectionIsNamed) {
  EXPECT_THAT(
      textsOf(found("minThreshold = 3\n" + kDefaultSettings)),
      ElementsAre(
          "Settings: line 1: 'minThreshold' is in no section, so that the module does not read it; move "
          "it below its section's header."));
}

TEST(SettingsCheck, SecondKeyIsNamed) {
  const std::string line = lineOf("minThreshold");
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, line, line + "\tminThreshold = 9\n"))),
      ElementsAre(
          "Settings: line 9: 'minThreshold' is there before, in line 8; the module reads the first one "
          "only. Remove one of them."));
}

TEST(SettingsCheck, UnknownKeyIsNamed) {
  const std::string line = lineOf("minThreshold");
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, line, line + "\tspeed = 9\n"))),
      ElementsAre(
          "Settings: line 9: the key 'speed' is unknown in '[PROGRAM]'; the module passes it over, and "
          "loses it when it writes the file. Remove it, or correct its spelling."));
}

TEST(SettingsCheck, KeyInOtherCapitalsIsCorrected) {
  EXPECT_THAT(
      textsOf(found(replaced(kDefaultSettings, "minThreshold", "MinThreshold"))),
      ElementsAre(
          "Settings: line 8: the key 'MinThreshold' is unknown in '[PROGRAM]'; write it 'minThreshold'.",
          missing("minThreshold", "PROGRAM", "0"), kReset));
}

TEST(SettingsCheck, KeyWithoutSeparatorIsNamed) {
  EXPECT_THAT(textsOf(found(replaced(kDefaultSettings, lineOf("minThreshold"), "minThreshold 7\n"))),
              ElementsAre("Settings: line 8: 'minThreshold 7' has no '='; write a key, '=' and a value.",
                          missing("minThreshold", "PROGRAM", "0"), kReset));
}

struct Value {
  std::string key;
  std::string value;
  std::string text;  ///< after "Settings: "
};

void PrintTo(const Value& value, std::ostream* streamP) {
  *streamP << value.key << " = " << value.value;
}

class SettingsCheckValue : public ::testing::TestWithParam<Value> {};

TEST_P(SettingsCheckValue, ValueIsJudged) {
  EXPECT_THAT(textsOf(found(settingsText({{GetParam().key, GetParam().value}}))),
              ElementsAre("Settings: " + GetParam().text));
}

INSTANTIATE_TEST_SUITE_P(
    All, SettingsCheckValue,
    ::testing::Values(
        Value{"transSensBase", "0",
              "line 6: 'transSensBase = 0' cannot be used; the module takes 20000. Write any number but 0."},
        Value{"rotSensBase", "-10000",
              "line 7: 'rotSensBase = -10000' turns the directions of the cap round; write 10000 unless that "
              "is "
              "wanted."},
        Value{"rotSensBase", "12000 fast",
              "line 7: 'rotSensBase = 12000 fast' is not a whole number that the module can hold; it takes "
              "12000. "
              "Write a number such as 10000."},
        Value{
            "transSensBase", "99999999999",
            "line 6: 'transSensBase = 99999999999' is not a whole number that the module can hold; it takes "
            "2147483647. Write a number such as 20000."},
        Value{"minThreshold", "ten",
              "line 8: 'minThreshold = ten' is not a whole number that the module can hold; it takes 0. "
              "Write a number "
              "such as 0."},
        Value{"minThreshold", "-1",
              "line 8: 'minThreshold = -1' cannot be used; the module takes 0. Write 0 or more."},
        Value{"minThreshold", "350",
              "line 8: 'minThreshold = 350' takes every movement of the cap for none: pushed as far as it "
              "goes it "
              "reports about 350. Write 0."},
        Value{"maxContMoveTime", "0", "line 9: 'maxContMoveTime = 0' switches cap and keys off; write 500."},
        Value{"maxContMoveTime", "-5",
              "line 9: 'maxContMoveTime = -5' cannot be used; the module takes 500. Write 0 or more."},
        Value{"useInt3dIntrfce", "on",
              "line 13: 'useInt3dIntrfce = on' leaves the cap to another plug-in, so that this one serves "
              "the keys only; "
              "write 'off' unless that is wanted."},
        Value{"toggleRotationAxis", "ON",
              "line 11: 'toggleRotationAxis = ON' is neither 'on' nor 'off' in small letters; the module "
              "takes it for "
              "'off'. Write one of them."},
        Value{"toggleRotationAxis", "none",
              "line 11: 'toggleRotationAxis = none' is neither 'on' nor 'off' in small letters; the module "
              "takes it for "
              "'on'. Write one of them."},
        Value{"logFile", "",
              "line 16: 'logFile =' names no file; the log goes to forgot_to_name_this_file_log.txt. Write a "
              "name."},
        Value{
            "maxSize", "0",
            "line 17: 'maxSize = 0': with such a size every entry begins a new log file. Write 1 or more."}));

TEST(SettingsCheck, Utf16FileIsNamed) {
  std::string text("\xFF\xFE", 2);
  for (const char c : kDefaultSettings) (text += c) += '\0';
  EXPECT_THAT(
      textsOf(found(text)),
      ElementsAre(
          "Settings: the file is stored as Unicode (UTF-16), of which the module can read nothing; store "
          "it as ANSI.",
          kReset));
}

TEST(SettingsCheck, ByteOrderMarkIsNamed) {
  EXPECT_THAT(
      textsOf(found("\xEF\xBB\xBF" + kDefaultSettings)),
      ElementsAre(
          "Settings: line 1: the file begins with an invisible byte order mark, with which the module "
          "cannot read that line; store it as ANSI."));
}

TEST(SettingsCheck, EmptyFileIsReset) {
  const auto texts = textsOf(found(""));
  EXPECT_EQ(texts.size(), 24u);
  EXPECT_EQ(texts.back(), kReset);
}

TEST(EffectiveSettings, ResetFileGivesTheDefaults) {
  const UserProfile profile;
  profile.writeSettings(replaced(settingsText({{"maxSize", "7"}}), lineOf("minThreshold"), ""));
  const EffectiveSettings settings(Profile(profile.root().string()).settingsFile);
  EXPECT_TRUE(settings.isReset());
  EXPECT_EQ(settings.number("maxSize"), 5000);
}

TEST(EffectiveSettings, WholeFileGivesItsValues) {
  const UserProfile profile;
  profile.writeSettings(settingsText({{"maxSize", "7"}, {"debug", "on"}}));
  const EffectiveSettings settings(Profile(profile.root().string()).settingsFile);
  EXPECT_FALSE(settings.isReset());
  EXPECT_EQ(settings.number("maxSize"), 7);
  EXPECT_TRUE(settings.isOn("debug"));
}

}  // namespace
