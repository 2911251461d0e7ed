#include "device/lmt_ctrlr.h"
#include "standin/controller/controller_feed.h"
#include "standin_clock.h"
#include "tests/standin_controller/reading_thread.h"
#include "windows.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace {

namespace clock = standin::clock;
namespace controller = standin::controller;
using controller::Event;
using Axes = std::array<std::int16_t, 6>;
using Events = std::vector<std::pair<std::int64_t, std::int32_t>>;

Event motion(Axes axes, std::int32_t code = -1) {
  return {code, axes, 11, 12};
}
Event command(std::int32_t code) {
  return {code, {}, 0, 0};
}

class EventsInReplay : public testing::Test {
 protected:
  void SetUp() override {
    clock::start(clock::Kind::kReplay);
    controller::reset();
    ASSERT_EQ(lmConnect(0, "acad"), 0);
  }
  void TearDown() override {
    EXPECT_EQ(clock::stalls(), 0u);
    clock::stop();
  }
};

TEST_F(EventsInReplay, ReadReturnsAPendingEventWithoutAWait) {
  controller::deliver(motion({1, -2, 3, -4, 5, -32768}, -7));
  EXPECT_EQ(controller::eventsPending(), 1u);
  const Reading reading = readOnce();
  EXPECT_EQ(reading, (Reading{0, 0, -7, {1, -2, 3, -4, 5, -32768}, 11, 12, false}));
  EXPECT_EQ(controller::eventsPending(), 0u);
  EXPECT_EQ(controller::eventsHandedOver(), 1u);
}

/// Every output of one read, as the library left it.
struct RawRead {
  std::int32_t status;
  Axes axes{};
  std::int32_t ignored1 = 0, ignored2 = 0, code = 0, extra1 = 0, extra2 = 0;
};

RawRead rawRead() {
  RawRead raw;
  Axes& a = raw.axes;
  raw.status = lmGetEvent(0, &a[0], &a[1], &a[2], &a[3], &a[4], &a[5], &raw.ignored1, &raw.ignored2,
                          &raw.code, &raw.extra1, &raw.extra2);
  return raw;
}

bool hasZero(const Axes& axes) {
  return std::find(axes.begin(), axes.end(), 0) != axes.end();
}

TEST_F(EventsInReplay, CommandEventCarriesGarbageAxesAndExtras) {
  controller::deliver({0x20009, {0, 0, 0, 0, 0, 0}, 0, 0});
  const RawRead raw = rawRead();
  EXPECT_EQ(raw.status, 0);
  EXPECT_EQ(raw.code, 0x20009);
  EXPECT_FALSE(hasZero(raw.axes));
  EXPECT_NE(raw.extra1, 0);
  EXPECT_NE(raw.extra2, 0);
}

TEST_F(EventsInReplay, FailedReadLeavesAMotionRecordOfGarbage) {
  const RawRead raw = rawRead();
  EXPECT_EQ(raw.status, 1);
  EXPECT_LT(raw.code, 0);
  EXPECT_FALSE(hasZero(raw.axes));
}

TEST_F(EventsInReplay, BlockingReadWaitsUntilAnEvent) {
  controller::setReadsBlock(true);
  clock::schedule(100000, [] { controller::deliver(command(0x2000C)); });
  const Reading reading = readOnce();
  EXPECT_EQ(reading.code, 0x2000C);
  EXPECT_EQ(reading.timeMs, 100000);
}

TEST_F(EventsInReplay, BlockingReadEndsWithADisconnect) {
  controller::setReadsBlock(true);
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  clock::advanceTo(100000);
  EXPECT_TRUE(reader.readings().empty());
  reader.letGo();
  EXPECT_EQ(lmDisconnect(), 0);
  EXPECT_FALSE(reader.isReading());
  EXPECT_EQ(reader.readings().size(), 1u);
}

TEST_F(EventsInReplay, BlockingReadEndsWhenTheDeviceGoesDown) {
  controller::setReadsBlock(true);
  clock::schedule(30, [] { controller::setDown(true); });
  EXPECT_EQ(readOnce().timeMs, 30);
}

TEST_F(EventsInReplay, BlockingReadWithoutAConnectionWaitsOnlyFiftyMilliseconds) {
  controller::setReadsBlock(true);
  lmDisconnect();
  EXPECT_EQ(readOnce().timeMs, 50);
}

TEST_F(EventsInReplay, FaultOfABlockingReadTakesEffectWithTheEvent) {
  controller::setReadsBlock(true);
  controller::faults().inject("lmGetEvent", {standin::Misbehaviour::kFail, 1, true});
  clock::schedule(70, [] { controller::deliver(command(0x20009)); });
  EXPECT_EQ(readOnce().timeMs, 70);
  EXPECT_EQ(controller::eventsPending(), 1u);
  EXPECT_EQ(readOnce().code, 0x20009);
}

TEST_F(EventsInReplay, EventsComeInTheOrderOfTheirDelivery) {
  for (const std::int32_t code : {0x20009, 0x20020, -1}) controller::deliver(command(code));
  EXPECT_EQ(readOnce().code, 0x20009);
  EXPECT_EQ(readOnce().code, 0x20020);
  EXPECT_EQ(readOnce().code, -1);
}

TEST_F(EventsInReplay, ReadWithoutAnEventFailsAfterFiftyMilliseconds) {
  const Reading reading = readOnce();
  EXPECT_EQ(reading.status, 1);
  EXPECT_EQ(reading.timeMs, 50);
}

TEST_F(EventsInReplay, EarlierEventDoesNotShortenTheNextWait) {
  controller::deliver(command(0x20009));
  EXPECT_EQ(readOnce().status, 0);
  EXPECT_EQ(readOnce().timeMs, 50);
}

TEST_F(EventsInReplay, EventEndsTheWait) {
  clock::schedule(20, [] { controller::deliver(command(0x2000C)); });
  const Reading reading = readOnce();
  EXPECT_EQ(reading.status, 0);
  EXPECT_EQ(reading.code, 0x2000C);
  EXPECT_EQ(reading.timeMs, 20);
}

TEST_F(EventsInReplay, ReadRefusesImpossibleArgumentsAtOnce) {
  std::int16_t a = 0;
  std::int32_t b = 0;
  controller::deliver(command(0x20009));
  EXPECT_EQ(lmGetEvent(0, nullptr, &a, &a, &a, &a, &a, &b, &b, &b, &b, &b), 1);
  EXPECT_EQ(lmGetEvent(0, &a, &a, &a, &a, &a, nullptr, &b, &b, &b, &b, &b), 1);
  EXPECT_EQ(lmGetEvent(0, &a, &a, &a, &a, &a, &a, nullptr, &b, &b, &b, &b), 1);
  EXPECT_EQ(lmGetEvent(0, &a, &a, &a, &a, &a, &a, &b, nullptr, &b, &b, &b), 1);
  EXPECT_EQ(lmGetEvent(0, &a, &a, &a, &a, &a, &a, &b, &b, nullptr, &b, &b), 1);
  EXPECT_EQ(lmGetEvent(0, &a, &a, &a, &a, &a, &a, &b, &b, &b, &b, nullptr), 1);
  EXPECT_EQ(lmGetEvent(-1, &a, &a, &a, &a, &a, &a, &b, &b, &b, &b, &b), 1);
  EXPECT_EQ(clock::nowMs(), 0);
  EXPECT_EQ(controller::eventsPending(), 1u);
}

TEST_F(EventsInReplay, ReadOfAMissingDeviceWaits) {
  controller::setDevices({});
  controller::deliver(command(0x20009));
  readOnce();
  const std::int64_t before = clock::nowMs();
  const Reading reading = readOnce();
  EXPECT_EQ(reading.status, 1);
  EXPECT_EQ(reading.timeMs, before + 50);
}

TEST_F(EventsInReplay, ReadWaitsBeforeItFailsWithoutAConnectionOrDevice) {
  controller::setDown(true);
  EXPECT_EQ(readOnce().timeMs, 50);
  controller::setDown(false);
  lmDisconnect();
  EXPECT_EQ(readOnce().timeMs, 100);
}

TEST_F(EventsInReplay, OnlyMotionChangesWhatWasLastHandedOver) {
  EXPECT_EQ(controller::lastHandedOver(), Axes{});
  controller::deliver(motion({1, 2, 3, 4, 5, 6}, -2147483647 - 1));
  EXPECT_EQ(controller::lastHandedOver(), Axes{});
  readOnce();
  EXPECT_EQ(controller::lastHandedOver(), (Axes{1, 2, 3, 4, 5, 6}));
  controller::deliver({0, {9, 9, 9, 9, 9, 9}, 0, 0});
  readOnce();
  EXPECT_EQ(controller::lastHandedOver(), (Axes{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(controller::eventsHandedOver(), 2u);
}

TEST_F(EventsInReplay, DeviceDownLosesNewAndPendingEvents) {
  controller::deliver(command(0x20009));
  controller::setDown(true);
  controller::deliver(command(0x2000A));
  EXPECT_EQ(controller::eventsPending(), 0u);
  controller::setDown(false);
  controller::deliver(command(0x2000B));
  EXPECT_EQ(readOnce().code, 0x2000B);
}

TEST_F(EventsInReplay, EventsWithoutAConnectionWaitForOne) {
  lmDisconnect();
  controller::deliver(command(0x20009));
  EXPECT_EQ(readOnce().status, 1);
  lmConnect(0, "acad");
  EXPECT_EQ(readOnce().code, 0x20009);
}

TEST_F(EventsInReplay, DeliveryReturnsWhenTheReaderHasProcessedIt) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  controller::deliver(motion({1, 0, 0, 0, 0, 0}));
  EXPECT_EQ(reader.events(), (Events{{0, -1}}));
  EXPECT_EQ(controller::lastHandedOver()[0], 1);
}

TEST_F(EventsInReplay, ReaderProcessesAScheduledEventBeforeTheAdvanceReturns) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  const auto deliverAt = [](std::int64_t timeMs, std::int32_t code) {
    clock::schedule(timeMs, [code] { controller::deliver(command(code)); });
  };
  deliverAt(10, 1);
  deliverAt(20, 2);
  deliverAt(60, 3);
  deliverAt(61, 4);
  clock::advanceTo(10);
  EXPECT_EQ(reader.events(), (Events{{10, 1}}));
  clock::drawn();
  EXPECT_EQ(reader.events(), (Events{{10, 1}, {20, 2}}));
  Sleep(34);
  EXPECT_EQ(reader.events(), (Events{{10, 1}, {20, 2}, {60, 3}}));
  GetTickCount();
  GetTickCount();
  EXPECT_EQ(reader.events(), (Events{{10, 1}, {20, 2}, {60, 3}, {61, 4}}));
}

TEST_F(EventsInReplay, ReaderProcessesAllEventsOfOneTime) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  clock::schedule(50, [] {
    for (int i = 0; i < 100; ++i) controller::deliver(command(i));
  });
  clock::advanceTo(50);
  const Events events = reader.events();
  ASSERT_EQ(events.size(), 100u);
  for (int i = 0; i < 100; ++i)
    EXPECT_EQ(events[static_cast<std::size_t>(i)], (std::pair<std::int64_t, int>(50, i)));
  EXPECT_EQ(controller::eventsPending(), 0u);
}

TEST_F(EventsInReplay, DisconnectEndsTheWait) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  clock::advanceTo(20);
  reader.letGo();
  EXPECT_TRUE(reader.isReading());
  EXPECT_EQ(lmDisconnect(), 0);
  EXPECT_FALSE(reader.isReading());
  EXPECT_EQ(reader.readings(), (std::vector<Reading>{{20, 1, 0, {}, 0, 0, false}}));
}

TEST_F(EventsInReplay, DeviceDownFailsAWaitingRead) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  clock::schedule(30, [] { controller::setDown(true); });
  clock::advanceTo(100);
  std::vector<std::int64_t> times;
  for (const Reading& reading : reader.readings()) times.push_back(reading.timeMs);
  EXPECT_EQ(times, (std::vector<std::int64_t>{30, 80}));
}

TEST_F(EventsInReplay, DisconnectOfAnotherThreadEndsTheWait) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  std::thread watch([] {
    Sleep(20);
    lmDisconnect();
    lmConnect(0, "acad");
  });
  ASSERT_TRUE(clock::settle());
  clock::advanceTo(20);
  ASSERT_EQ(reader.readings().size(), 1u);
  EXPECT_EQ(reader.readings()[0].status, 1);
  EXPECT_TRUE(controller::isConnected());
  watch.join();
}

TEST_F(EventsInReplay, FaultTakesEffectAfterTheWaitAndLeavesTheEventPending) {
  ReadingThread reader;
  ASSERT_TRUE(clock::settle());
  controller::faults().inject("lmGetEvent", {standin::Misbehaviour::kFail, 1, true});
  clock::schedule(10, [] { controller::deliver(command(0x20009)); });
  clock::advanceTo(10);
  ASSERT_EQ(reader.readings().size(), 2u);
  EXPECT_EQ(reader.readings()[0].status, 1);
  EXPECT_EQ(reader.events(), (Events{{10, 0x20009}}));
}

TEST_F(EventsInReplay, LastingFaultDoesNotMakeTheReaderSpin) {
  for (const auto kind : {standin::Misbehaviour::kFail, standin::Misbehaviour::kThrow}) {
    const std::int64_t start = clock::nowMs();
    controller::faults().inject("lmGetEvent", {kind, 1, false});
    controller::deliver(command(0x20009));
    ReadingThread reader;
    ASSERT_TRUE(clock::settle());
    clock::advanceTo(start + 500);
    EXPECT_LE(reader.readings().size(), 11u);
    EXPECT_GE(reader.readings().size(), 9u);
    EXPECT_TRUE(reader.events().empty());
    EXPECT_GE(controller::eventsPending(), 1u);
    reader.end();
  }
}

TEST_F(EventsInReplay, TwoReadersOnOneConnectionAreABreach) {
  controller::deliver(command(1));
  controller::deliver(command(2));
  readOnce();
  EXPECT_TRUE(controller::breaches().empty());
  std::thread([] { readOnce(); }).join();
  EXPECT_EQ(controller::breaches(), std::vector<std::string>{"lmGetEvent called from two threads"});
}

TEST_F(EventsInReplay, ReaderOfTheNextConnectionIsNoBreach) {
  controller::deliver(command(1));
  controller::deliver(command(2));
  readOnce();
  lmDisconnect();
  lmConnect(0, "acad");
  std::thread([] { readOnce(); }).join();
  EXPECT_TRUE(controller::breaches().empty());
}

/// A whole run: reader, a watch that reconnects, a thousand events of all kinds with the device down for a
/// while.
std::vector<Reading> playScenario() {
  clock::start(clock::Kind::kReplay, 16);
  controller::reset();
  lmConnect(0, "acad");
  ReadingThread reader;
  std::atomic<bool> isToWatch{true};
  std::thread watch([&isToWatch] {
    std::int32_t count = 0;
    while (isToWatch) {
      if (lmGetDevNum(&count, &count, &count) != 0) {
        lmDisconnect();
        lmConnect(0, "acad");
      }
      Sleep(2000);
    }
  });
  EXPECT_TRUE(clock::settle());
  clock::schedule(1500, [] { controller::setDown(true); });
  clock::schedule(2500, [] { controller::setDown(false); });
  for (int i = 0; i < 1000; ++i)
    clock::schedule(i * 11, [i] {
      controller::deliver(motion({static_cast<std::int16_t>(i), 0, 0, 0, 0, 0}, i % 7 == 0 ? i : -i - 1));
    });
  while (clock::nowMs() < 12000) {
    clock::drawn();
    GetTickCount();
    GetTickCount();
    Sleep(3);
  }
  isToWatch = false;
  Sleep(2000);
  watch.join();
  reader.end();
  EXPECT_TRUE(controller::breaches().empty());
  return reader.readings();
}

TEST(ControllerScenario, TwoRunsGiveTheSameReadings) {
  const std::vector<Reading> first = playScenario();
  EXPECT_GT(controller::eventsHandedOver(), 700u);
  for (int again = 0; again < 3; ++again) EXPECT_TRUE(playScenario() == first);
}

TEST(ControllerInRealTime, ReaderGetsEventsAndIsReleased) {
  clock::start(clock::Kind::kReal, 16, 100.0);
  controller::reset();
  ASSERT_EQ(lmConnect(0, "acad"), 0);
  ReadingThread reader;
  clock::schedule(5, [] { controller::deliver(motion({7, 0, 0, 0, 0, 0})); });
  while (controller::eventsHandedOver() == 0) std::this_thread::yield();
  EXPECT_EQ(controller::lastHandedOver()[0], 7);
  reader.letGo();
  EXPECT_EQ(lmDisconnect(), 0);
  reader.end();
  clock::stop();
}

}  // namespace
