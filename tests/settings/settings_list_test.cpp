#include "common_sources/settings_list.h"

#include <gtest/gtest.h>

#include <set>
#include <vector>

namespace {

std::vector<Setting> allSettings() {
  std::vector<Setting> all(std::begin(kProgramSettings), std::end(kProgramSettings));
  all.insert(all.end(), std::begin(kLogSettings), std::end(kLogSettings));
  return all;
}

TEST(SettingsList, EveryKeyAppearsOnce) {
  std::set<std::string_view> keys;
  for (const Setting& setting : allSettings()) EXPECT_TRUE(keys.insert(setting.key).second) << setting.key;
  EXPECT_EQ(keys.size(), 23u);
}

TEST(SettingsList, EveryCommentFollowsAHash) {
  for (const Setting& setting : allSettings()) EXPECT_EQ(setting.comment.substr(0, 2), "# ") << setting.key;
}

TEST(SettingsList, EveryDefaultNumberIsUsable) {
  for (const Setting& setting : allSettings()) {
    const auto* const numberP = std::get_if<std::int32_t>(&setting.defaultValue);
    if (numberP == nullptr) continue;
    EXPECT_TRUE(isUsable(setting.usableNumbers, *numberP)) << setting.key;
  }
}

TEST(SettingsList, DefaultTextIsWhatTheFileHolds) {
  EXPECT_EQ(defaultText(kProgramSettings[0]), "AutoCAD Plug-in");
  EXPECT_EQ(defaultText(kProgramSettings[2]), "20000");
  EXPECT_EQ(defaultText(kProgramSettings[6]), "on");
  EXPECT_EQ(defaultText(kProgramSettings[7]), "off");
}

TEST(SettingsList, UsableNumbersEndAtTheirLimits) {
  for (const std::int32_t number : {-1, 0, 1}) {
    EXPECT_TRUE(isUsable(UsableNumbers::kAny, number));
    EXPECT_EQ(isUsable(UsableNumbers::kNotZero, number), number != 0);
    EXPECT_EQ(isUsable(UsableNumbers::kNotNegative, number), number >= 0);
    EXPECT_EQ(isUsable(UsableNumbers::kPositive, number), number > 0);
  }
}

TEST(SettingsList, DefaultReplacesANumberThatTheModuleCannotWorkWith) {
  EXPECT_EQ(usableNumber("rotSensBase", 0), 10000);
  EXPECT_EQ(usableNumber("rotSensBase", -3), -3);
  EXPECT_EQ(usableNumber("maxContMoveTime", -1), 500);
  EXPECT_EQ(usableNumber("maxContMoveTime", 0), 0);
}

}  // namespace
