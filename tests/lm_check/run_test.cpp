#include "packaging/lm_check/run.h"

#include "tests/lm_check/finding_texts.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <sstream>
#include <string>

namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;
using tests::kDefaultSettings;
using tests::settingsText;

const std::string kMenu = "[Modes]\nAutoCAD = 0\n\n[MenuBar]\n1 = {Line}_line\n";

struct Result {
  int status = 0;
  std::string output;
  std::string errors;
};

Result run(const std::vector<std::string>& arguments) {
  std::ostringstream output, errors;
  const int status = runCheck(arguments, output, errors);
  return {status, output.str(), errors.str()};
}

/// A profile in which nothing is wrong but what a test adds.
class RunCheck : public ::testing::Test {
 protected:
  RunCheck() {
    profile.writeSettings(kDefaultSettings);
    profile.write("Lumetrapad/Applications/autocad.mnu", kMenu);
  }
  std::string folder() const { return profile.root().string(); }

  UserProfile profile;
};

TEST_F(RunCheck, WholeProfileHasStatusZero) {
  const Result result = run({"--profile", folder()});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "Nothing found.\n");
}

TEST_F(RunCheck, FindingsAreOneALine) {
  profile.writeSettings(settingsText({{"maxContMoveTime", "0"}, {"logToFile", "off"}}));
  const Result result = run({"--profile", folder()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "Settings: line 9: 'maxContMoveTime = 0' switches cap and keys off; write 500.\n"
            "Log: 'logToFile' is off, so that no error is recorded; write 'on'.\n");
}

TEST_F(RunCheck, MissingDriversFolderIsAllThatIsReported) {
  std::filesystem::remove_all(profile / "Lumetrapad");
  const Result result = run({"--profile", folder()});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.output,
            "Driver: its folder '" + folder() +
                "\\Lumetrapad\\Applications' is missing, and the module can keep neither settings nor menu "
                "file; start the driver once as this user.\n");
}

TEST_F(RunCheck, ProfileThatIsNoFolderCannotBeChecked) {
  const Result result = run({"--profile", "/nowhere"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "lm_check: /nowhere: expected a user's profile folder, found no folder\n");
}

TEST_F(RunCheck, WrongArgumentsGetTheUsage) {
  for (const std::vector<std::string>& wrong :
       {std::vector<std::string>{"--nonsense"}, {"--profile"}, {"x"}}) {
    const Result result = run(wrong);
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.errors, StartsWith("usage: lm_check"));
  }
}

TEST_F(RunCheck, HelpIsNoError) {
  EXPECT_EQ(run({"--help"}).status, 0);
  EXPECT_THAT(run({"--help"}).output, StartsWith("usage: lm_check"));
}

TEST_F(RunCheck, JsonHoldsIdsAndTexts) {
  profile.writeSettings(settingsText({{"maxContMoveTime", "0"}}));
  const Result result = run({"--profile", folder(), "--json"});
  EXPECT_EQ(result.status, 1);
  const auto json = nlohmann::json::parse(result.output);
  EXPECT_EQ(json["version"], "2.9.2.0");
  ASSERT_EQ(json["findings"].size(), 1u);
  EXPECT_EQ(json["findings"][0]["id"], "settings.cap-off");
  EXPECT_EQ(json["findings"][0]["text"],
            "Settings: line 9: 'maxContMoveTime = 0' switches cap and keys off; write 500.");
}

TEST_F(RunCheck, JsonOfAnotherCodePageIsWhole) {
  profile.writeSettings(settingsText({{"fileToLog", "\xFC.cpp"}}));
  EXPECT_EQ(nlohmann::json::parse(run({"--profile", folder(), "--json"}).output)["findings"].size(), 1u);
}

TEST_F(RunCheck, FixWritesBesideAndReportsWhatItChanged) {
  const std::string broken =
      tests::replaced(settingsText({{"trace", "ON"}, {"maxSize", "77"}}), "minThreshold ", "minTreshold ");
  profile.writeSettings(broken);
  const Result result = run({"--profile", folder(), "--fix"});
  EXPECT_EQ(result.status, 1);
  EXPECT_THAT(result.output,
              HasSubstr("Repair: 'minThreshold' was missing and is now '0'.\n"
                        "Repair: 'trace' was 'ON' in line 22 and is now 'on'.\n"
                        "Repair: written to '" +
                        folder() +
                        "\\Lumetrapad\\Applications\\autocad_addin.repaired.ini'; close AutoCAD and put it "
                        "in the place of autocad_addin.ini.\n"));
  EXPECT_EQ(profile.settings(), broken);
  EXPECT_EQ(profile.read("Lumetrapad/Applications/autocad_addin.repaired.ini"),
            settingsText({{"trace", "on"}, {"maxSize", "77"}}));
}

TEST_F(RunCheck, RepairThatCannotBeWrittenHasStatusTwo) {
  std::filesystem::create_directory(profile.applications() / "autocad_addin.repaired.ini");
  const Result result = run({"--profile", folder(), "--fix"});
  EXPECT_EQ(result.status, 2);
  EXPECT_THAT(result.errors, HasSubstr("autocad_addin.repaired.ini' could not be written\n"));
}

}  // namespace
