#include "standin_clock.h"
#include "standin_messages.h"
#include "tests/support/temp_folder.h"
#include "tests/util/system_faults.h"
#include "util/util.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdint>
#include <ctime>
#include <string>

namespace {

using standin::windows::UserMessage;

TEST(FileProbes, FileProbeTakesAFileThatMayNotBeOpenedForLocked) {
  const TempFolder folder;
  folder.write("a.txt", "");
  const SystemFault fault(SystemCall::kOpen, EACCES);
  EXPECT_TRUE(Util::isFileLocked(folder.path("a.txt")));
}

TEST(FileProbes, FileProbeTakesNoOtherFailureForALock) {
  const TempFolder folder;
  folder.write("a.txt", "");
  EXPECT_FALSE(Util::isFileLocked(folder.path("a.txt")));
  EXPECT_FALSE(Util::isFileLocked(folder.path("none.txt")));
  const SystemFault fault(SystemCall::kOpen, EMFILE);
  EXPECT_FALSE(Util::isFileLocked(folder.path("a.txt")));
}

/// The time zone of the process while it lives.
class TimeZone {
 public:
  explicit TimeZone(const char* name) {
    tests::setEnvironment("TZ", name);
    tzset();
  }
  ~TimeZone() {
    tests::clearEnvironment("TZ");
    tzset();
  }
  TimeZone(const TimeZone&) = delete;
  TimeZone& operator=(const TimeZone&) = delete;
};

TEST(LocalDate, DateIsAnotherDayWhereTheClockIsAheadByMoreThanADay) {
  standin::clock::start(standin::clock::Kind::kReal);
  std::string east, west;
  {
    const TimeZone zone("East-14");
    east = Util::localDate();
  }
  {
    const TimeZone zone("West+12");
    west = Util::localDate();
  }
  EXPECT_NE(east, west);
}

TEST(TimesOfDay, TimeOfDayIsThatOfUtcInEveryZone) {
  constexpr std::int64_t kSecondsOfDay = 24 * 60 * 60;
  standin::clock::start(standin::clock::Kind::kReal);
  const TimeZone zone("East-5");
  const std::int64_t before = std::time(nullptr) % kSecondsOfDay;
  const std::int64_t seconds = Util::utcMsOfDay() / 1000;
  // Also when the day has ended in between.
  EXPECT_LE((seconds - before + kSecondsOfDay) % kSecondsOfDay, 60);
}

TEST(TimesOfDay, TimeOfDayCountsMilliseconds) {
  constexpr std::int64_t kUtcMs = 1234567890123;
  standin::clock::start(standin::clock::Kind::kReplay);
  standin::clock::setDate(kUtcMs);
  EXPECT_EQ(Util::utcMsOfDay(), kUtcMs % (24 * 60 * 60 * 1000));
  standin::clock::stop();
}

class Boxes : public testing::Test {
 protected:
  Boxes() { standin::windows::clearUserMessages(); }
  ~Boxes() override { standin::windows::clearUserMessages(); }
};

TEST_F(Boxes, BoxIsShownAfterABeep) {
  EXPECT_EQ(Util::beepAndShowMessage(nullptr, "text", "caption", 0x10), 1);
  const std::vector<UserMessage> messages = standin::windows::userMessages();
  ASSERT_EQ(messages.size(), 2u);
  EXPECT_EQ(messages[0].kind, UserMessage::Kind::kBeep);
  EXPECT_EQ(messages[0].frequency, 440u);
  EXPECT_EQ(messages[0].durationMs, 200u);
  EXPECT_EQ(messages[1].text, L"text");
  EXPECT_EQ(messages[1].caption, L"caption");
  EXPECT_EQ(messages[1].type, 0x10u);
}

TEST_F(Boxes, BoxThatCannotBeShownBeepsAndReportsIt) {
  standin::windows::setBoxAnswer(0);
  EXPECT_EQ(Util::beepAndShowMessage(nullptr, "text", "caption", 0), 0);
  ASSERT_FALSE(standin::windows::userMessages().empty());
  EXPECT_EQ(standin::windows::userMessages()[0].kind, UserMessage::Kind::kBeep);
}

}  // namespace
