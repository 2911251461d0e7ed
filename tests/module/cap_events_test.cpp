#include "standin/objectarx/call_record.h"
#include "standin_clock.h"
#include "standin_win32_faults.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

namespace clock_ = standin::clock;
namespace host = standin::host;
using standin::Misbehaviour;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class CapEvents : public ModuleTest {
 protected:
  void orderHost(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(host::faults().inject(operation, {kind, 1, isOnce})) << operation;
  }
  std::vector<std::string> errors() const { return logTexts("ERR"); }
};

TEST_F(CapEvents, FirstTickComesAfterAHundredMilliseconds) {
  load();
  EXPECT_EQ(clock_::nextTimer(), clock_::nowMs() + 100);
}

TEST_F(CapEvents, ConstructionAndDestructionAreLogged) {
  load();
  unload();
  EXPECT_THAT(logTexts("CRT", "AutoCadProxy"), ElementsAre("Constructing ...", "AutoCadProxy constructed."));
  EXPECT_THAT(logTexts("CRT", "~AutoCadProxy"), ElementsAre("Destructing ...", "Destructed."));
}

TEST_F(CapEvents, ProxyExistsFromConstructionToDestruction) {
  EXPECT_EQ(AutoCadProxy::instance(), nullptr);
  load();
  EXPECT_EQ(AutoCadProxy::instance(), &proxy());
  unload();
  EXPECT_EQ(AutoCadProxy::instance(), nullptr);
}

TEST_F(CapEvents, IdleTicksAreAHundredMillisecondsApart) {
  load();
  clock_::advanceTo(*clock_::nextTimer());
  ASSERT_TRUE(clock_::runDueTimer());
  EXPECT_EQ(clock_::nextTimer(), clock_::nowMs() + 100);
  EXPECT_EQ(clock_::timerCount(), 1u);
}

TEST_F(CapEvents, TicksWhileTheCapMovesAreTenMillisecondsApart) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  clock_::advanceTo(*clock_::nextTimer());
  ASSERT_TRUE(clock_::runDueTimer());
  EXPECT_TRUE(proxy().isCapMoving());
  EXPECT_EQ(clock_::nextTimer(), clock_::nowMs() + 10);
}

TEST_F(CapEvents, OneTickServesTheCapForTheConfiguredTime) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  clock_::advanceTo(*clock_::nextTimer());
  const std::int64_t before = clock_::nowMs();
  ASSERT_TRUE(clock_::runDueTimer());
  // The tick count reads 1, 17, ... 497, 513 ms; the pass after 497 is the last, as the time is read before
  // it.
  EXPECT_EQ(mHost.mUpdates.size(), 33u);
  EXPECT_EQ(clock_::nowMs() - before, 1 + 33 * 16);
}

TEST_F(CapEvents, ShortestTimeStillServesOnePass) {
  writeSettings({{"maxContMoveTime", "1"}});
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().doTransform();
  EXPECT_EQ(mHost.mUpdates.size(), 1u);
}

TEST_F(CapEvents, TimeOfZeroDoesNothingAtAll) {
  writeSettings({{"maxContMoveTime", "0"}});
  load();
  deflect({10, 0, 0, 0, 0, 0});
  idle(1000);
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
  EXPECT_FALSE(proxy().isCapMoving());
}

TEST_F(CapEvents, ValuesEqualToTheThresholdCountAsReleased) {
  writeSettings({{"minThreshold", "20"}});
  load();
  deflect({20, -20, 20, -20, 20, -20});
  EXPECT_FALSE(proxy().handleDeviceCap());
  deflect({0, 0, 0, 0, 0, -21});
  EXPECT_TRUE(proxy().handleDeviceCap());
}

TEST_F(CapEvents, ValuesBelowTheThresholdStillMoveWhenAnotherIsBeyondIt) {
  writeSettings({{"minThreshold", "20"}});
  load();
  deflect({5, 0, 0, 100, 0, 0});
  proxy().handleDeviceCap();
  EXPECT_TRUE(hasLogged("Move x-Direction, value: 0.00025"));
}

TEST_F(CapEvents, MovementIsLoggedOnceAndEndsWithTheRelease) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  idle(1500);
  EXPECT_EQ(countLogged("Cap moving."), 1u);
  EXPECT_EQ(countLogged("Cap released."), 0u);
  deflect({});
  idle(200);
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_EQ(countLogged("Cap released."), 1u);
  EXPECT_THAT(logTexts("INF", "handleDeviceCap"), ElementsAre("Cap moving."));
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Cap released."));
}

TEST_F(CapEvents, ReleaseCommitsTheViewAsItWasShown) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  idle(300);
  EXPECT_THAT(mHost.mCommits, IsEmpty());
  deflect({});
  idle(200);
  ASSERT_EQ(mHost.mCommits.size(), 1u);
  EXPECT_EQ(mHost.mCommits[0].position.x, mHost.mUpdates.back().position.x);
}

TEST_F(CapEvents, ReleasedCapThatDidNotMoveDoesNothing) {
  load();
  idle(1000);
  EXPECT_THAT(mHost.mCommits, IsEmpty());
  EXPECT_EQ(countLogged("Cap released."), 0u);
}

struct ModeCase {
  const wchar_t* tileMode;
  const wchar_t* viewport;
  int mode;
};

class NavigationModes : public CapEvents, public ::testing::WithParamInterface<ModeCase> {};

TEST_P(NavigationModes, NavigationModeFollowsTabAndViewport) {
  load();
  ASSERT_TRUE(host::setVariable(L"TILEMODE", GetParam().tileMode));
  ASSERT_TRUE(host::setVariable(L"CVPORT", GetParam().viewport));
  EXPECT_EQ(proxy().getNavigationMode(), GetParam().mode);
}

INSTANTIATE_TEST_SUITE_P(Cases, NavigationModes,
                         ::testing::Values(ModeCase{L"0", L"1", k2DMode}, ModeCase{L"0", L"2", k3DMode},
                                           ModeCase{L"1", L"2", k3DMode}));

TEST_F(CapEvents, UnreadableVariablesMeanThreeDimensions) {
  load();
  orderHost("acedGetVar", Misbehaviour::kFail, false);
  EXPECT_EQ(proxy().getNavigationMode(), k3DMode);
}

TEST_F(CapEvents, ForeignInterfaceLeavesTheCapAloneAndTheTimerSlow) {
  writeSettings({{"useInt3dIntrfce", "on"}});
  load();
  deflect({10, 0, 0, 10, 0, 0});
  idle(1000);
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
  EXPECT_FALSE(proxy().isCapMoving());
  clock_::advanceTo(*clock_::nextTimer());
  ASSERT_TRUE(clock_::runDueTimer());
  EXPECT_EQ(clock_::nextTimer(), clock_::nowMs() + 100);
}

TEST_F(CapEvents, ReleaseInTwoDimensionsLogsTheUnlockEvenWithoutALock) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  proxy().handleCapIsReleased(k2DMode);
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Document unlocked", "Cap released."));
  EXPECT_EQ(host::counts().unlocks, 0u);
}

TEST_F(CapEvents, ReleaseWithoutAValidViewIsLoggedAndEndsTheMovement) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  host::setViewValid(false);
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_THAT(errors(), ElementsAre("viewP not valid!"));
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_THAT(mHost.mCommits, IsEmpty());
}

TEST_F(CapEvents, ReleaseWithoutAViewCommitsNothing) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  orderHost("acgsGetGsView", Misbehaviour::kFail);
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_THAT(errors(), ElementsAre("AcGsView object could not be retrieved!"));
  EXPECT_FALSE(proxy().isCapMoving());
}

TEST_F(CapEvents, FailedReleaseIsLoggedAndStillEndsTheMovement) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  orderHost("acgsSetViewParameters", Misbehaviour::kThrow);
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_THAT(errors(), ElementsAre("Error handleCapIsReleased()"));
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_THAT(logTexts("TRC", "handleCapIsReleased"), ElementsAre("Cap released."));
}

TEST_F(CapEvents, FailureInAPassIsLoggedAndTheLoopGoesOn) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  orderHost("acedGetVar", Misbehaviour::kThrow);
  proxy().doTransform();
  EXPECT_THAT(errors(), ElementsAre("Error doTransform()"));
  EXPECT_GT(mHost.mUpdates.size(), 30u);
}

TEST_F(CapEvents, PassesThatAlwaysFailEndWithTheirTime) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  orderHost("acedGetVar", Misbehaviour::kThrow, false);
  const std::int64_t before = clock_::nowMs();
  proxy().doTransform();
  EXPECT_EQ(clock_::nowMs() - before, 500);
  EXPECT_EQ(countLogged("Error doTransform()"), 500u);
}

TEST_F(CapEvents, DeactivatedTimerIsNotArmedAgain) {
  load();
  proxy().deactivate();
  idle(500);
  EXPECT_EQ(clock_::timerCount(), 0u);
}

TEST_F(CapEvents, ChangeOfTabDuringAMovementChangesTheHandler) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  const std::size_t updates = mHost.mUpdates.size();
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  EXPECT_TRUE(proxy().handleDeviceCap());
  EXPECT_EQ(mHost.mUpdates.size(), updates);
  deflect({});
  EXPECT_FALSE(proxy().handleDeviceCap());
  EXPECT_TRUE(hasLogged("Document unlocked"));
}

TEST_F(CapEvents, CommitRegeneratesAndRescalesButDoesNotSynchronise) {
  load();
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  EXPECT_TRUE(host::callRecord().createIfNone);
  proxy().handleCapIsReleased(k3DMode);
  EXPECT_TRUE(host::callRecord().regenRequired);
  EXPECT_TRUE(host::callRecord().rescaleRequired);
  EXPECT_FALSE(host::callRecord().syncRequired);
}

struct UnusableSetting {
  const char* key;
  const char* value;
  const char* text;
};

class UnusableSettings : public CapEvents, public ::testing::WithParamInterface<UnusableSetting> {};

TEST_P(UnusableSettings, UnusableSettingIsReplacedByItsDefault) {
  writeSettings({{GetParam().key, GetParam().value}});
  load();
  EXPECT_THAT(errors(), ElementsAre(GetParam().text));
  deflect({10, 0, 10, 10, 0, 0});
  clock_::advanceTo(*clock_::nextTimer());
  clock_::runDueTimer();
  EXPECT_EQ(mHost.mUpdates.size(), 33u);
  EXPECT_THAT(host::counts().breaches, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Keys, UnusableSettings,
    ::testing::Values(UnusableSetting{"transSensBase", "0", "Setting 'transSensBase' is 0, 20000 is used!"},
                      UnusableSetting{"rotSensBase", "none", "Setting 'rotSensBase' is 0, 10000 is used!"},
                      UnusableSetting{"minThreshold", "-5", "Setting 'minThreshold' is -5, 0 is used!"},
                      UnusableSetting{"maxContMoveTime", "-1",
                                      "Setting 'maxContMoveTime' is -1, 500 is used!"}));

TEST_F(CapEvents, NegativeThresholdLeavesACapAtRestReleased) {
  writeSettings({{"minThreshold", "-1"}});
  load();
  idle(1000);
  EXPECT_FALSE(proxy().isCapMoving());
  EXPECT_THAT(mHost.mUpdates, IsEmpty());
}

TEST_F(CapEvents, WrapOfTheTickCountIsHarmless) {
  load();
  clock_::setTickBase(0xFFFFFFFFu - static_cast<std::uint32_t>(clock_::nowMs()) - 200);
  deflect({10, 0, 0, 0, 0, 0});
  clock_::advanceTo(*clock_::nextTimer());
  const std::uint32_t before = GetTickCount();
  proxy().doTransform();
  EXPECT_LT(GetTickCount(), before) << "it has wrapped";
  EXPECT_EQ(mHost.mUpdates.size(), 33u);
}

TEST_F(CapEvents, FailureOfTheTickIsLoggedAndTheTimerStaysOff) {
  load();
  clock_::advanceTo(*clock_::nextTimer());
  ASSERT_TRUE(standin::windows::faults().inject("GetTickCount", {Misbehaviour::kThrow, 1, true}));
  clock_::runDueTimer();
  EXPECT_THAT(errors(), ElementsAre("Error TimerProc()"));
  EXPECT_EQ(clock_::timerCount(), 0u);
}

TEST_F(CapEvents, TimerThatCannotBeSetIsLogged) {
  ASSERT_TRUE(standin::windows::faults().inject("SetTimer", {Misbehaviour::kFail, 1, true}));
  load();
  EXPECT_THAT(errors(), ElementsAre("Error SetTimer()"));
}

/// Only one that the module still knows can be killed before the host unmaps its procedure.
TEST_F(CapEvents, TimerThatCannotBeKilledIsArmedAgain) {
  load();
  ASSERT_TRUE(standin::windows::faults().inject("KillTimer", {Misbehaviour::kFail, 1, true}));
  idle(1000);
  EXPECT_EQ(clock_::timerCount(), 1u);
  unload();
  EXPECT_EQ(clock_::timerCount(), 0u);
}

TEST_F(CapEvents, TimerThatCanBeNeitherKilledNorSetEndsWithTheModule) {
  load();
  ASSERT_TRUE(standin::windows::faults().inject("KillTimer", {Misbehaviour::kFail, 1, true}));
  ASSERT_TRUE(standin::windows::faults().inject("SetTimer", {Misbehaviour::kFail, 1, true}));
  idle(1000);
  unload();
  EXPECT_EQ(clock_::timerCount(), 0u);
}

TEST_F(CapEvents, ThresholdIsReadAnewAndDivisorsAreNot) {
  load();
  deflect({15, 0, 0, 0, 0, 0});
  mCoreP->setMinThreshold(15);
  EXPECT_FALSE(proxy().handleDeviceCap());
  mCoreP->setMinThreshold(14);
  mCoreP->setTransSensBase(1);
  EXPECT_TRUE(proxy().handleDeviceCap());
  EXPECT_THAT(logTexts("INF", "moveXYZ"), ElementsAre("Move x-Direction, value: 0.00075"));
}

TEST_F(CapEvents, TimeOfZeroServesNoKeysEither) {
  writeSettings({{"maxContMoveTime", "0"}});
  load();
  mHost.mSent.clear();
  deviceEvent(0x2000B);
  idle(500);
  EXPECT_THAT(mHost.mSent, IsEmpty());
}

TEST_F(CapEvents, ForeignInterfaceServesKeysOnceATick) {
  writeSettings({{"useInt3dIntrfce", "on"}});
  load();
  orderHost("AcApDocManager::curDocument", Misbehaviour::kThrow, false);
  deviceEvent(0x2000B);
  proxy().tick();
  proxy().tick();
  EXPECT_EQ(countLogged("Error handleDeviceKeys()"), 2u);
}

TEST_F(CapEvents, LockIsGivenBackBeforeTheViewIsCommitted) {
  load();
  ASSERT_TRUE(host::setVariable(L"TILEMODE", L"0"));
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"1"));
  deflect({10, 0, 0, 0, 0, 0});
  proxy().handleDeviceCap();
  ASSERT_TRUE(proxy().isDocLocked());
  EXPECT_EQ(host::callRecord().lockMode, AcAp::kWrite);
  EXPECT_FALSE(host::callRecord().hasLockNames);
  EXPECT_TRUE(host::callRecord().isLockPrompted);
  ASSERT_TRUE(host::setVariable(L"CVPORT", L"2"));
  class LockAtCommit : public host::Listener {
   public:
    void viewCommitted(int, const host::Camera&) override { mDepth = host::counts().lockDepth; }
    std::int64_t mDepth = -1;
  } listener;
  host::setListener(&listener);
  proxy().handleCapIsReleased(k3DMode);
  host::setListener(&mHost);
  EXPECT_EQ(listener.mDepth, 0);
}

}  // namespace
