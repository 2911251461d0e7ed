#include "common_sources/daemon_proxy.h"

#include "standin_clock.h"
#include "tests/module/module_fixture.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace controller = standin::controller;
using standin::Misbehaviour;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class DaemonProxyTest : public ModuleTest {
 protected:
  std::vector<std::string> logged(const std::string& method) const {
    return logTexts("", "DaemonProxy::" + method);
  }
  void inject(const char* operation, Misbehaviour kind, bool isOnce = true) {
    ASSERT_TRUE(controller::faults().inject(operation, {kind, 1, isOnce}));
  }
  DaemonProxy& daemon() { return *mCoreP->daemonProxy(); }
};

TEST_F(DaemonProxyTest, ConnectsAsAcad) {
  load();
  EXPECT_EQ(controller::connectedAs(), "acad");
  EXPECT_EQ(controller::connectReserved(), 0);
  EXPECT_TRUE(controller::isConnected());
  EXPECT_TRUE(daemon().isConnected());
}

TEST_F(DaemonProxyTest, ConstructionAndDestructionAreLogged) {
  load();
  unload();
  EXPECT_THAT(logged("DaemonProxy"), ElementsAre("Constructing ...", "Constructed."));
  EXPECT_THAT(logged("~DaemonProxy"), ElementsAre("Destructing ...", "Destructed."));
}

TEST_F(DaemonProxyTest, ConnectLogsEachDevice) {
  controller::setDevices({"Lumetrapad", "Second pad"});
  load();
  EXPECT_THAT(logged("connect"),
              ElementsAre("Checking connection ...", "devIdx: 0:Lumetrapad", "devIdx: 1:Second pad"));
  EXPECT_THAT(logTexts("TRC", "connect"), ElementsAre("Checking connection ..."));
  EXPECT_THAT(logTexts("INF", "connect"), ElementsAre("devIdx: 0:Lumetrapad", "devIdx: 1:Second pad"));
}

TEST_F(DaemonProxyTest, NoDeviceIsNoFailure) {
  controller::setDevices({});
  load();
  EXPECT_TRUE(daemon().isConnected());
  EXPECT_THAT(logged("connect"), ElementsAre("Checking connection ..."));
}

struct ConnectFailure {
  const char* operation;
  const char* text;
};

class ConnectFails : public DaemonProxyTest,
                     public ::testing::WithParamInterface<std::tuple<ConnectFailure, Misbehaviour>> {};

TEST_P(ConnectFails, FailedConnectionNamesTheOperationAndReturnsFalse) {
  load();
  inject(std::get<0>(GetParam()).operation, std::get<1>(GetParam()));
  EXPECT_FALSE(daemon().connect());
  EXPECT_FALSE(daemon().isConnected());
  EXPECT_EQ(logTexts("ERR", "DaemonProxy::connect"), std::vector<std::string>{std::get<0>(GetParam()).text});
}

INSTANTIATE_TEST_SUITE_P(
    Operations, ConnectFails,
    ::testing::Combine(::testing::Values(ConnectFailure{"lmConnect", "Error in lmConnect()!"},
                                         ConnectFailure{"lmGetDevNum", "Error in lmGetDevNum()!"},
                                         ConnectFailure{"lmGetDevInfo", "Error in lmGetDevInfo()!"}),
                       ::testing::Values(Misbehaviour::kFail, Misbehaviour::kThrow)));

TEST_F(DaemonProxyTest, FailedDeviceInfoKeepsLaterDevicesFromBeingAsked) {
  controller::setDevices({"First", "Second"});
  load();
  const std::uint64_t before = controller::faults().calls("lmGetDevInfo");
  inject("lmGetDevInfo", Misbehaviour::kFail);
  EXPECT_FALSE(daemon().connect());
  EXPECT_EQ(controller::faults().calls("lmGetDevInfo"), before + 1);
}

TEST_F(DaemonProxyTest, CheckedConnectionThatRespondsStays) {
  load();
  EXPECT_TRUE(daemon().checkConnection());
  EXPECT_TRUE(controller::isConnected());
}

TEST_F(DaemonProxyTest, CheckedConnectionThatIsLostIsClosedAndNotRestored) {
  load();
  inject("lmGetDevNum", Misbehaviour::kFail);
  EXPECT_FALSE(daemon().checkConnection());
  EXPECT_FALSE(daemon().isConnected());
  EXPECT_FALSE(controller::isConnected());
  EXPECT_THAT(logTexts("ERR", "DaemonProxy::checkConnection"), ElementsAre("Error in lmGetDevNum()!"));
}

TEST_F(DaemonProxyTest, FailedDisconnectOfALostConnectionIsLogged) {
  load();
  inject("lmGetDevNum", Misbehaviour::kFail);
  inject("lmDisconnect", Misbehaviour::kFail);
  EXPECT_FALSE(daemon().checkConnection());
  EXPECT_THAT(logTexts("ERR", "DaemonProxy::checkConnection"),
              ElementsAre("Error in lmGetDevNum()!", "Error in lmDisconnect()!"));
}

TEST_F(DaemonProxyTest, FailedDisconnectOfTheDestructorIsLoggedWithItsOwnSpelling) {
  load();
  inject("lmDisconnect", Misbehaviour::kFail);
  unload();
  EXPECT_EQ(logTexts("ERR", "DaemonProxy::~DaemonProxy"),
            std::vector<std::string>{"Error in lmDisConnect()!"});
}

TEST_F(DaemonProxyTest, FailedSettingsReadLeavesRotationModeZeroInForce) {
  controller::setAdvancedSettings(113, 1);
  load();
  ASSERT_EQ(proxy().rotationMode().rotCenterMode, 3);
  inject("lmGetAdvancedSettings", Misbehaviour::kFail);
  daemon().retrieveRotMode();
  const RotationMode mode = proxy().rotationMode();
  EXPECT_EQ(mode.rotCenterMode, 0);
  EXPECT_FALSE(mode.isKeepHorizon);
  EXPECT_FALSE(mode.isHover);
  EXPECT_FALSE(mode.isZoomAllAfterView);
  EXPECT_EQ(logTexts("ERR", "DaemonProxy::retrieveRotMode"),
            std::vector<std::string>{"Error in lmGetAdvancedSettings()!"});
}

TEST_F(DaemonProxyTest, SettingsEventsReadTheRotationModeAgain) {
  load();
  for (const std::int32_t code : {0x20001, 0x20002}) {
    controller::setAdvancedSettings(code == 0x20001 ? 112 : 1, code == 0x20001);
    deviceEvent(code);
    EXPECT_EQ(proxy().rotationMode().rotCenterMode, code == 0x20001 ? 2 : 1);
    EXPECT_EQ(proxy().rotationMode().isZoomAllAfterView, code == 0x20001);
  }
}

TEST_F(DaemonProxyTest, MotionOfAnyNegativeCodeIsStoredWhole) {
  load();
  for (const std::int32_t code : {-1, -77, INT32_MIN}) {
    controller::deliver({code, {1, -2, 3, -4, 5, -32768}, 7, code});
    idle(100);
    short x, y, z, rx, ry, rz;
    std::int32_t extra1, extra2;
    mCoreP->getCapData(x, y, z, rx, ry, rz, extra1, extra2);
    EXPECT_THAT((std::vector<int>{x, y, z, rx, ry, rz, extra1, extra2}),
                ElementsAre(1, -2, 3, -4, 5, -32768, 7, code));
  }
}

TEST_F(DaemonProxyTest, CommandEventsLeaveTheMotionAsItWas) {
  load();
  deflect({1, 2, 3, 4, 5, 6});
  for (const std::int32_t code : {0x20001, 0x20002, 0x20009, 0x2000E, 0x20013, 0x20020, 0}) deviceEvent(code);
  EXPECT_THAT(mCoreP->capData().axes, ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_EQ(mCoreP->capData().extra1, 0);
  EXPECT_EQ(mCoreP->capData().extra2, 0);
}

TEST_F(DaemonProxyTest, KeysAndModesInAMovementLeaveItsDirection) {
  load();
  deflect({0, 0, 0, 100, 0, 0});
  proxy().handleDeviceCap();
  for (const std::int32_t code : {0x2000B, 0x20020, 0x20001}) {
    deviceEvent(code);
    proxy().handleDeviceKeys();
    proxy().handleDeviceCap();
  }
  EXPECT_THAT(logTexts("DBG", "rotate"), ElementsAre("Rotate Axis: 0.01(0)", "Rotate Axis: 0.01(0)",
                                                     "Rotate Axis: 0.01(0)", "Rotate Axis: 0.01(0)"));
  EXPECT_THAT(logTexts("INF", "moveXYZ"), IsEmpty());
}

class ReadFails : public DaemonProxyTest, public ::testing::WithParamInterface<Misbehaviour> {};

TEST_P(ReadFails, FailedReadIsSilentAndKeepsTheMotion) {
  load();
  deflect({9, 0, 0, 0, 0, 0});
  inject("lmGetEvent", GetParam(), false);
  deflect({10, 0, 0, 0, 0, 0});
  idle(500);
  EXPECT_EQ(mCoreP->capData().axes[0], 9);
  EXPECT_TRUE(logTexts("ERR").empty());
  inject("lmGetEvent", Misbehaviour::kNone);
  idle(100);
  EXPECT_EQ(mCoreP->capData().axes[0], 10);
}

INSTANTIATE_TEST_SUITE_P(Kinds, ReadFails, ::testing::Values(Misbehaviour::kFail, Misbehaviour::kThrow));

struct FunctionEvent {
  std::int32_t code;
  std::int32_t applFunc;
  std::int32_t specialApplFunc;
};

class FunctionEvents : public DaemonProxyTest, public ::testing::WithParamInterface<FunctionEvent> {};

TEST_P(FunctionEvents, FunctionEventArrivesInItsSlotAndIsLogged) {
  load();
  deviceEvent(GetParam().code);
  EXPECT_EQ(mCoreP->getApplFunc(), GetParam().applFunc);
  EXPECT_EQ(mCoreP->getSpecialApplFunc(), GetParam().specialApplFunc);
  EXPECT_THAT(logTexts("DBG", "readMouseEvents"),
              ElementsAre("event: " + std::to_string(GetParam().code) + ", APPL_FUNC_START: 131104"));
}

INSTANTIATE_TEST_SUITE_P(
    Codes, FunctionEvents,
    ::testing::Values(FunctionEvent{0x20020, 0, 0}, FunctionEvent{0x20025, 5, 0},
                      FunctionEvent{0x20009, -1, 0x20009}, FunctionEvent{0x2000A, -1, 0x2000A},
                      FunctionEvent{0x2000B, -1, 0x2000B}, FunctionEvent{0x2000C, -1, 0x2000C},
                      FunctionEvent{0x20016, -1, 0x20016}, FunctionEvent{0x20017, -1, 0x20017},
                      FunctionEvent{0x20018, -1, 0x20018}, FunctionEvent{0x2000E, -1, 0},
                      FunctionEvent{0x20008, -1, 0}, FunctionEvent{0x2000D, -1, 0},
                      FunctionEvent{0x20015, -1, 0}, FunctionEvent{0x20019, -1, 0},
                      FunctionEvent{0x2001F, -1, 0}, FunctionEvent{0, -1, 0}));

TEST_F(DaemonProxyTest, NewestOfTwoFunctionsWins) {
  load();
  deviceEvent(0x20021);
  deviceEvent(0x20022);
  EXPECT_EQ(mCoreP->getApplFunc(), 2);
}

std::vector<std::string> reportedModes() {
  std::vector<std::string> modes;
  for (const controller::ApplMode& mode : controller::applModes())
    modes.push_back(mode.application + ":" + mode.mode);
  return modes;
}

TEST_F(DaemonProxyTest, ModeIsReportedOnceAfterTheConnection) {
  load();
  idle(1000);
  EXPECT_THAT(reportedModes(), ElementsAre("AutoCAD:Unknown"));
}

TEST_F(DaemonProxyTest, ModeIsReportedAgainOnRequest) {
  load();
  idle(100);
  deviceEvent(0x20013);
  EXPECT_THAT(reportedModes(), ElementsAre("AutoCAD:Unknown", "AutoCAD:Unknown"));
}

TEST_F(DaemonProxyTest, ModeIsReportedAfterEveryConnectionEvenIfUnchanged) {
  load();
  idle(100);
  daemon().connect();
  idle(100);
  EXPECT_THAT(reportedModes(), ElementsAre("AutoCAD:Unknown", "AutoCAD:Unknown"));
}

TEST_F(DaemonProxyTest, FailedReportOfAChangedModeIsTriedInTheNextIteration) {
  inject("lmSetApplMode", Misbehaviour::kFail);
  load();
  idle(200);
  EXPECT_THAT(reportedModes(), ElementsAre("AutoCAD:Unknown"));
  EXPECT_TRUE(logTexts("ERR").empty());
}

TEST_F(DaemonProxyTest, FailedReportOfAnUnchangedModeIsNotTriedAgain) {
  load();
  idle(100);
  inject("lmSetApplMode", Misbehaviour::kFail);
  daemon().connect();
  idle(200);
  EXPECT_THAT(reportedModes(), ElementsAre("AutoCAD:Unknown"));
}

TEST_F(DaemonProxyTest, ReadingLoopIsLoggedFromItsThreadsStartToItsEnd) {
  load();
  unload();
  EXPECT_THAT(logTexts("CRT", "readMouseEvents"),
              ElementsAre("Creating reading thread ...", "Invoking reading loop ... mIsToRead: 1",
                          "Reading loop left.", "Reading thread ended."));
}

TEST_F(DaemonProxyTest, LibraryIsCalledInTheOrderOfItsInterface) {
  load();
  idle(100);
  unload();
  std::vector<std::string> names;
  for (const controller::Call& call : controller::calls())
    if (call.operation != "lmGetEvent" && call.operation != "lmSetApplMode") names.push_back(call.operation);
  EXPECT_THAT(names, ElementsAre("lmConnect", "lmGetDevNum", "lmGetDevInfo", "lmGetAdvancedSettings",
                                 "lmGetDevNum", "lmDisconnect"))
      << "the second lmGetDevNum is the watch thread's";
}

TEST_F(DaemonProxyTest, DestructionEndsAReadThatWaitsWithoutEnd) {
  controller::setReadsBlock(true);
  load();
  idle(25);
  unload();
  EXPECT_FALSE(controller::isConnected());
  EXPECT_TRUE(controller::breaches().empty());
}

TEST_F(DaemonProxyTest, DestructionWaitsForTheReadingThreadInStepsOf200Milliseconds) {
  controller::setReadsBlock(true);
  load();
  inject("lmDisconnect", Misbehaviour::kFail);
  // The watch thread ends within the first 2000 ms of the unload; the read of the other one goes on.
  const std::int64_t eventMs = standin::clock::nowMs() + 2250;
  standin::clock::schedule(eventMs, [] { controller::deliver({-1, {}, 0, 0}); });
  unload();
  const std::vector<controller::Call> calls = controller::calls();
  const auto disconnect = std::find_if(calls.begin(), calls.end(),
                                       [](const auto& call) { return call.operation == "lmDisconnect"; });
  ASSERT_NE(disconnect, calls.end());
  ASSERT_LT(disconnect->timeMs + 200, eventMs);
  EXPECT_EQ(standin::clock::nowMs() - disconnect->timeMs, 400);
}

TEST_F(DaemonProxyTest, DestructionEndsAWaitingRead) {
  load();
  idle(25);
  unload();
  EXPECT_FALSE(controller::isConnected());
  EXPECT_TRUE(controller::breaches().empty());
}

}  // namespace
