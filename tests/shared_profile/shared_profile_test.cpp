#include "tests/support/program.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <regex>
#include <sstream>

using testing::IsEmpty;

namespace {

// A clock that runs faster shortens the 2 s that each unload takes; Windows has only its own.
#ifdef _WIN32
constexpr int kLives = 2;
constexpr const char* kSpeed = "1";
#else
constexpr int kLives = 12;
constexpr const char* kSpeed = "50";
#endif

/// No value is the default, so that a reset would show.
tests::SettingsChanges changes() {
  tests::SettingsChanges result = tests::everyLogLevel("on");
  result.insert({{"transSensBase", "20001"}, {"rotSensBase", "10001"}, {"minThreshold", "7"}});
  return result;
}

class SharedProfile : public testing::Test {
 protected:
  /// Two processes side by side, from their start to their end.
  void runTwoHosts() {
    mProfile.writeSettings(tests::settingsText(changes()));
    const std::vector<std::string> arguments = {std::to_string(kLives), kSpeed};
    tests::Program one(LM_PROFILE_HOST, arguments), other(LM_PROFILE_HOST, arguments);
    EXPECT_EQ(one.wait(), 0);
    EXPECT_EQ(other.wait(), 0);
  }

  /// The lines of the log that are not of a header.
  std::vector<std::string> entries() const {
    static const std::vector<std::string> kHeaderStarts = {"-----", "Lumetra logfile '", "    Time    |"};
    std::istringstream file(mProfile.log());
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
      if (std::none_of(kHeaderStarts.begin(), kHeaderStarts.end(),
                       [&line](const std::string& start) { return line.rfind(start, 0) == 0; }))
        lines.push_back(line);
    return lines;
  }

  UserProfile mProfile;
};

TEST_F(SharedProfile, TwoHostsResetNoSetting) {
  runTwoHosts();
  EXPECT_EQ(mProfile.settings(), tests::settingsText(changes()));
}

TEST_F(SharedProfile, TwoHostsLogNoError) {
  runTwoHosts();
  std::vector<std::string> errors;
  for (const std::string& line : entries())
    if (line.find("|ERR|") != std::string::npos) errors.push_back(line);
  EXPECT_THAT(errors, IsEmpty());
}

/// Each life logs the same lines, and those that continue an entry bear no time: each is there once a life.
TEST_F(SharedProfile, TwoHostsWriteWholeLines) {
  runTwoHosts();
  static const std::regex kStart(
      "\\d\\d:\\d\\d:\\d\\d\\.\\d{3}\\|[A-Z]{3}\\| *\\d+\\|.{16}\\| *\\d+\\| .{32}\\| .*");
  std::map<std::string, int> continuations;
  for (const std::string& line : entries())
    if (!std::regex_match(line, kStart)) ++continuations[line];
  EXPECT_GT(continuations.size(), 20u);
  for (const auto& [line, count] : continuations) EXPECT_EQ(count % (2 * kLives), 0) << line;
}

TEST_F(SharedProfile, LogHoldsEveryLifeOfBothHosts) {
  runTwoHosts();
  const std::vector<std::string> lines = entries();
  const auto isEndOfALife = [](const std::string& line) {
    return line.find("LmAutoCad::LmAutoCad::~LmAutoCad| Destructed.") != std::string::npos;
  };
  EXPECT_EQ(std::count_if(lines.begin(), lines.end(), isEndOfALife), 2 * kLives);
}

}  // namespace
