#include "host/toggle_commands.h"

#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

#include <fstream>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ToggleCommands : public ModuleTest {};

TEST_F(ToggleCommands, RotationCentreIsReported) {
  load();
  toggleRotationCenter();
  toggleRotationCenter();
  EXPECT_THAT(mHost.mPrinted, ElementsAre(L"\n=> Selection as Rotation Center:  off",
                                          L"\n=> Selection as Rotation Center:  on"));
}

TEST_F(ToggleCommands, RotationAxisIsReported) {
  load();
  toggleRotationAxis();
  EXPECT_TRUE(mCoreP->toggleRotationAxis());
  toggleRotationAxis();
  EXPECT_THAT(mHost.mPrinted, ElementsAre(L"\n=> Selected Line as Rotation Axis:  on",
                                          L"\n=> Selected Line as Rotation Axis:  off"));
}

TEST_F(ToggleCommands, ScrollModeIsReported) {
  load();
  toggleScrollMode();
  toggleScrollMode();
  EXPECT_THAT(mHost.mPrinted,
              ElementsAre(L"\n=> Scroll Trees and Lists:  off", L"\n=> Scroll Trees and Lists:  on"));
}

TEST_F(ToggleCommands, ObjectMoveModeIsReported) {
  load();
  toggleObjectMoveMode();
  EXPECT_TRUE(proxy().isObjectMoveMode());
  toggleObjectMoveMode();
  EXPECT_THAT(mHost.mPrinted,
              ElementsAre(L"\n=> Move Selected Object:  on", L"\n=> Move Selected Object:  off"));
}

TEST_F(ToggleCommands, ToggleCommandPrintsNothingBeforeTheCoreObjectExists) {
  toggleRotationCenter();
  toggleRotationAxis();
  toggleScrollMode();
  toggleObjectMoveMode();
  EXPECT_THAT(mHost.mPrinted, IsEmpty());
}

TEST_F(ToggleCommands, ToggleCommandPrintsNothingOnceTheCoreObjectIsGone) {
  load();
  unload();
  toggleScrollMode();
  EXPECT_THAT(mHost.mPrinted, IsEmpty());
}

TEST_F(ToggleCommands, SwitchesOfTheSettingsApplyAtTheNextLoad) {
  load();
  toggleRotationCenter();
  toggleRotationAxis();
  toggleScrollMode();
  toggleObjectMoveMode();
  unload();
  load();
  EXPECT_FALSE(mCoreP->toggleRotationCenter());
  EXPECT_TRUE(mCoreP->toggleRotationAxis());
  EXPECT_FALSE(mCoreP->scrollTreeAndList());
  EXPECT_FALSE(proxy().isObjectMoveMode()) << "starts afresh";
}

}  // namespace
