#include "workbench/live/toggles.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TEST(Toggles, BeginAsTheSettingsSay) {
  Toggles toggles;
  toggles.loaded("toggleRotationCenter = on # a\ntoggleRotationAxis = off\nscrollTreeAndList = on\n");
  EXPECT_TRUE(toggles.isOn(0));
  EXPECT_FALSE(toggles.isOn(1));
  EXPECT_TRUE(toggles.isOn(2));
  EXPECT_FALSE(toggles.isOn(3));
}

TEST(Toggles, FollowWhatTheModulePrints) {
  Toggles toggles;
  toggles.printed("\n=> Move Selected Object:  on");
  EXPECT_TRUE(toggles.isOn(3));
  toggles.printed("\n=> Move Selected Object:  off");
  EXPECT_FALSE(toggles.isOn(3));
}

TEST(Toggles, MoveModeEndsWithTheModule) {
  Toggles toggles;
  toggles.printed("\n=> Move Selected Object:  on");
  toggles.loaded("");
  EXPECT_FALSE(toggles.isOn(3));
}

}  // namespace
}  // namespace workbench
