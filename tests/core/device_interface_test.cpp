// The client library's interface as the module sees it: ordinals, records, codes.
#include "device/lmt_ctrlr.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

namespace {

std::map<std::string, std::string> ordinalsOfTheDefinitionFile() {
  std::ifstream file(LM_SOURCE_DIR "/device/lmt_ctrlr_64.def");
  std::map<std::string, std::string> ordinals;
  for (std::string line; std::getline(file, line);) {
    std::istringstream words(line);
    std::string name, ordinal, noName;
    words >> name >> ordinal >> noName;
    if (noName == "NONAME") ordinals[name] = ordinal;
  }
  return ordinals;
}

TEST(DeviceInterface, OperationsAreImportedByTheirOrdinals) {
  const std::map<std::string, std::string> expected{
      {"lmConnect", "@104"},    {"lmDisconnect", "@106"},
      {"lmGetEvent", "@108"},   {"lmGetAdvancedSettings", "@110"},
      {"lmGetDevInfo", "@116"}, {"lmGetDevNum", "@117"},
      {"lmSetApplMode", "@180"}};
  EXPECT_EQ(ordinalsOfTheDefinitionFile(), expected);
}

TEST(DeviceInterface, EventCodesAreTheDaemons) {
  EXPECT_EQ(APPL_FUNC_START, 131104);
  EXPECT_EQ(LM_SETTINGS_CHANGED, 0x20001);
  EXPECT_EQ(LM_SETTINGS_CHANGED_2, 0x20002);
  EXPECT_EQ(LM_VIEW_FRONT, 0x20009);
  EXPECT_EQ(LM_VIEW_RIGHT, 0x2000A);
  EXPECT_EQ(LM_VIEW_TOP, 0x2000B);
  EXPECT_EQ(LM_FIT_ALL, 0x2000C);
  EXPECT_EQ(LM_SEND_APPL_MODE, 0x20013);
  EXPECT_EQ(LM_VIEW_BACK, 0x20016);
  EXPECT_EQ(LM_VIEW_LEFT, 0x20017);
  EXPECT_EQ(LM_VIEW_BOTTOM, 0x20018);
}

}  // namespace
