#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"
#include "standin_clock.h"
#include "tests/standin_controller/reading_thread.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;

class Operations : public testing::Test {
 protected:
  void SetUp() override {
    clock::start(clock::Kind::kReplay);
    controller::reset();
  }
  void TearDown() override { clock::stop(); }
};

class ConnectedOperations : public Operations {
 protected:
  void SetUp() override {
    Operations::SetUp();
    ASSERT_EQ(lmConnect(0, "acad"), 0);
  }
};

struct Count {
  std::int32_t status;
  std::int32_t count;
};
Count deviceCount() {
  std::int32_t count = -1;
  std::int32_t ignored1 = -1;
  std::int32_t ignored2 = -1;
  const std::int32_t status = lmGetDevNum(&count, &ignored1, &ignored2);
  return {status, count};
}

TEST_F(Operations, FreshDaemonHasOneDeviceAndNoConnection) {
  EXPECT_FALSE(controller::isConnected());
  EXPECT_EQ(controller::connectedAs(), "");
  EXPECT_EQ(controller::eventsPending(), 0u);
  EXPECT_EQ(controller::eventsHandedOver(), 0u);
  EXPECT_EQ(lmConnect(0, "acad"), 0);
  EXPECT_EQ(deviceCount().count, 1);
  LmDevInfo info;
  std::memset(&info, 'x', sizeof info);
  EXPECT_EQ(lmGetDevInfo(0, &info), 0);
  EXPECT_STREQ(info.name, "Lumetrapad");
}

TEST_F(Operations, ConnectStoresItsArguments) {
  EXPECT_EQ(lmConnect(7, "acad"), 0);
  EXPECT_TRUE(controller::isConnected());
  EXPECT_EQ(controller::connectedAs(), "acad");
  EXPECT_EQ(controller::connectReserved(), 7);
  EXPECT_NE(lmConnect(0, nullptr), 0);
}

TEST_F(Operations, EverythingButConnectFailsWithoutAConnection) {
  ASSERT_EQ(lmConnect(0, "acad"), 0);
  EXPECT_EQ(lmDisconnect(), 0);
  LmDevInfo info;
  LmAdvancedSettings settings;
  EXPECT_NE(lmDisconnect(), 0);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_NE(lmGetDevInfo(0, &info), 0);
  EXPECT_NE(lmGetAdvancedSettings(0, &settings), 0);
  EXPECT_NE(lmSetApplMode("AutoCAD", "Unknown"), 0);
  EXPECT_NE(readOnce().status, 0);
  EXPECT_TRUE(controller::breaches().empty());
}

TEST_F(ConnectedOperations, EverythingFailsWhileTheDeviceIsDown) {
  controller::setDown(true);
  LmDevInfo info;
  LmAdvancedSettings settings;
  EXPECT_NE(lmConnect(0, "acad"), 0);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_NE(lmGetDevInfo(0, &info), 0);
  EXPECT_NE(lmGetAdvancedSettings(0, &settings), 0);
  EXPECT_NE(lmSetApplMode("AutoCAD", "Unknown"), 0);
  EXPECT_NE(readOnce().status, 0);
  controller::setDown(false);
  EXPECT_EQ(deviceCount().status, 0);
}

TEST_F(ConnectedOperations, DisconnectWhileDownFailsAndCloses) {
  controller::setDown(true);
  EXPECT_NE(lmDisconnect(), 0);
  EXPECT_FALSE(controller::isConnected());
  controller::setDown(false);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_EQ(lmConnect(0, "acad"), 0);
  EXPECT_EQ(deviceCount().status, 0);
}

TEST_F(ConnectedOperations, DeviceInfoReportsTheDevicesThatWereSet) {
  controller::setDevices({"First", std::string(600, 'n')});
  EXPECT_EQ(deviceCount().count, 2);
  LmDevInfo info;
  EXPECT_EQ(lmGetDevInfo(1, &info), 0);
  EXPECT_EQ(std::string(info.name), std::string(sizeof info.name - 1, 'n'));
  EXPECT_NE(lmGetDevInfo(2, &info), 0);
  EXPECT_NE(lmGetDevInfo(-1, &info), 0);
  EXPECT_NE(lmGetDevInfo(0, nullptr), 0);
}

TEST_F(ConnectedOperations, AdvancedSettingsReportWhatWasSet) {
  controller::setAdvancedSettings(104, 1);
  LmAdvancedSettings settings;
  std::memset(&settings, 'x', sizeof settings);
  EXPECT_EQ(lmGetAdvancedSettings(0, &settings), 0);
  EXPECT_EQ(settings.rotationMode, 104);
  EXPECT_EQ(settings.zoomAfterView, 1);
  EXPECT_NE(lmGetAdvancedSettings(1, &settings), 0);
  EXPECT_NE(lmGetAdvancedSettings(0, nullptr), 0);
}

TEST_F(ConnectedOperations, DaemonKeepsApplicationModesInOrder) {
  EXPECT_EQ(lmSetApplMode("AutoCAD", "Unknown"), 0);
  EXPECT_EQ(lmSetApplMode("AutoCAD", "Modelling"), 0);
  EXPECT_NE(lmSetApplMode(nullptr, "x"), 0);
  EXPECT_NE(lmSetApplMode("AutoCAD", nullptr), 0);
  const auto modes = controller::applModes();
  ASSERT_EQ(modes.size(), 2u);
  EXPECT_EQ(modes[0].application, "AutoCAD");
  EXPECT_EQ(modes[0].mode, "Unknown");
  EXPECT_EQ(modes[1].mode, "Modelling");
}

TEST_F(ConnectedOperations, FailedOperationsLeaveGarbageInTheirOutputs) {
  controller::setDown(true);
  LmDevInfo info{};
  LmAdvancedSettings settings{};
  EXPECT_NE(lmGetDevInfo(0, &info), 0);
  EXPECT_NE(lmGetAdvancedSettings(0, &settings), 0);
  EXPECT_EQ(std::memchr(info.name, 0, sizeof info.name), nullptr);
  EXPECT_NE(settings.rotationMode, 0);
  EXPECT_NE(settings.zoomAfterView, 0);
  EXPECT_GT(deviceCount().count, 1);
}

TEST_F(ConnectedOperations, ThrowingOperationLeavesGarbageInItsOutput) {
  LmAdvancedSettings settings{};
  ASSERT_TRUE(controller::faults().inject("lmGetAdvancedSettings", {standin::Misbehaviour::kThrow, 1, true}));
  EXPECT_THROW(lmGetAdvancedSettings(0, &settings), standin::InjectedFault);
  EXPECT_NE(settings.rotationMode, 0);
}

using CallTimes = std::vector<std::pair<std::string, std::int64_t>>;

CallTimes callTimes() {
  CallTimes result;
  for (const controller::Call& call : controller::calls()) result.emplace_back(call.operation, call.timeMs);
  return result;
}

TEST_F(ConnectedOperations, CallsAreRecordedInOrderWithTheirTimes) {
  clock::advanceTo(20);
  deviceCount();
  lmSetApplMode("AutoCAD", "Unknown");
  lmDisconnect();
  EXPECT_EQ(callTimes(),
            (CallTimes{{"lmConnect", 0}, {"lmGetDevNum", 20}, {"lmSetApplMode", 20}, {"lmDisconnect", 20}}));
}

TEST_F(ConnectedOperations, CallRecordHoldsTheFirstOfReadsInARow) {
  readOnce();
  readOnce();
  deviceCount();
  readOnce();
  EXPECT_EQ(callTimes(),
            (CallTimes{{"lmConnect", 0}, {"lmGetEvent", 0}, {"lmGetDevNum", 100}, {"lmGetEvent", 100}}));
}

TEST_F(ConnectedOperations, CallRecordKeepsTheNewestTenThousand) {
  for (int i = 0; i < 10005; ++i) deviceCount();
  ASSERT_EQ(controller::calls().size(), 10000u);
  EXPECT_EQ(controller::calls().front().operation, "lmGetDevNum");
}

TEST_F(ConnectedOperations, DeviceCountNeedsItsThreeOutputs) {
  std::int32_t value = 0;
  EXPECT_NE(lmGetDevNum(nullptr, &value, &value), 0);
  EXPECT_NE(lmGetDevNum(&value, nullptr, &value), 0);
  EXPECT_NE(lmGetDevNum(&value, &value, nullptr), 0);
}

TEST_F(Operations, CallsBeforeTheFirstConnectAreBreaches) {
  deviceCount();
  deviceCount();
  readOnce();
  lmDisconnect();
  EXPECT_EQ(controller::breaches(),
            (std::vector<std::string>{"lmGetDevNum called before the first lmConnect",
                                      "lmGetEvent called before the first lmConnect",
                                      "lmDisconnect called before the first lmConnect"}));
  controller::reset();
  EXPECT_TRUE(controller::breaches().empty());
}

TEST_F(Operations, FailedConnectCountsAsTheFirstConnect) {
  controller::setDown(true);
  EXPECT_NE(lmConnect(0, "acad"), 0);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_TRUE(controller::breaches().empty());
}

TEST_F(ConnectedOperations, InjectedFaultFailsAnOperationOnceOrForGood) {
  using standin::Misbehaviour;
  const std::vector<std::string> names{
      "lmConnect",    "lmDisconnect", "lmGetEvent",   "lmGetAdvancedSettings",
      "lmGetDevInfo", "lmGetDevNum",  "lmSetApplMode"};
  EXPECT_EQ(controller::faults().names(), names);
  ASSERT_TRUE(controller::faults().inject("lmGetDevNum", {Misbehaviour::kFail, 2, true}));
  EXPECT_EQ(deviceCount().status, 0);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_EQ(deviceCount().status, 0);
  ASSERT_TRUE(controller::faults().inject("lmGetDevNum", {Misbehaviour::kFail, 1, false}));
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_NE(deviceCount().status, 0);
  EXPECT_EQ(controller::faults().calls("lmGetDevNum"), 5u);
}

TEST_F(ConnectedOperations, EveryOperationThrowsWhereInjected) {
  LmDevInfo info;
  LmAdvancedSettings settings;
  for (const std::string& name : controller::faults().names())
    ASSERT_TRUE(controller::faults().inject(name, {standin::Misbehaviour::kThrow, 1, true}));
  EXPECT_THROW(lmConnect(0, "acad"), standin::InjectedFault);
  EXPECT_THROW(lmGetDevInfo(0, &info), standin::InjectedFault);
  EXPECT_THROW(lmGetAdvancedSettings(0, &settings), standin::InjectedFault);
  EXPECT_THROW(lmSetApplMode("AutoCAD", "Unknown"), standin::InjectedFault);
  EXPECT_THROW(deviceCount(), standin::InjectedFault);
  EXPECT_THROW(lmDisconnect(), standin::InjectedFault);
  EXPECT_TRUE(readOnce().isThrown);
}

TEST_F(Operations, InjectedConnectFailureLeavesNoConnection) {
  ASSERT_TRUE(controller::faults().inject("lmConnect", {standin::Misbehaviour::kFail, 1, true}));
  EXPECT_NE(lmConnect(0, "acad"), 0);
  EXPECT_FALSE(controller::isConnected());
  EXPECT_EQ(controller::connectedAs(), "acad");
}

}  // namespace
