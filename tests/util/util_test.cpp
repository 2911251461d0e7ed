#include "util/util.h"

#include "standin_clock.h"
#include "tests/support/system.h"
#include "tests/support/temp_folder.h"

#include <gmock/gmock.h>

#include <climits>
#include <ctime>
#include <filesystem>
#include <regex>

namespace {

TEST(UserProfileDir, UserProfileDirIsTheEnvironmentsValueUnchanged) {
  tests::setEnvironment("USERPROFILE", "C:\\Users\\x\\");
  EXPECT_EQ(Util::getUserProfileDir(), "C:\\Users\\x\\");
}

TEST(UserProfileDir, UserProfileDirIsEmptyWithoutTheVariable) {
  tests::clearEnvironment("USERPROFILE");
  EXPECT_EQ(Util::getUserProfileDir(), "");
}

TEST(FileProbes, FileProbeFindsAFileButNoFolder) {
  const TempFolder folder;
  folder.write("a.txt", "");
  EXPECT_TRUE(Util::fileExists(folder.path("a.txt")));
  EXPECT_FALSE(Util::fileExists(folder.path("b.txt")));
  EXPECT_FALSE(Util::fileExists(folder.path("")));
  EXPECT_TRUE(Util::folderExists(folder.path("")));
  EXPECT_FALSE(Util::folderExists(folder.path("a.txt")));
  EXPECT_FALSE(Util::folderExists(folder.path("none")));
}

TEST(Widening, WideningExtendsTheSignOfEachByteToSixteenBits) {
  EXPECT_EQ(Util::widen("a\x7f\x80\xe4\xff"), L"a\x7f\xff80\xffe4\xffff");
  EXPECT_EQ(Util::widen(""), L"");
}

TEST(OnOff, TextThatContainsOnMeansOn) {
  for (const char* const text : {"on", "none", "on # comment", "xon"})
    EXPECT_TRUE(Util::onOffToBool(text)) << text;
  for (const char* const text : {"off", "ON", "On", "true", "yes", "1", "o n", ""})
    EXPECT_FALSE(Util::onOffToBool(text)) << text;
}

TEST(OnOff, SwitchIsWrittenInLowerCase) {
  EXPECT_STREQ(Util::boolToOnOff(true), "on");
  EXPECT_STREQ(Util::boolToOnOff(false), "off");
}

TEST(RotationTexts, AxisLocksHaveTexts) {
  EXPECT_EQ(Util::textToAxisLock("off"), 0);
  EXPECT_EQ(Util::textToAxisLock("horz"), 1);
  EXPECT_EQ(Util::textToAxisLock("vert"), 2);
  EXPECT_EQ(Util::textToAxisLock("horz off"), 0) << "the table's order counts, not the text's";
  EXPECT_EQ(Util::textToAxisLock("Horz"), -1);
  EXPECT_STREQ(Util::axisLockToText(0), "off");
  EXPECT_STREQ(Util::axisLockToText(1), "horz");
  EXPECT_STREQ(Util::axisLockToText(2), "vert");
  EXPECT_STREQ(Util::axisLockToText(3), "unknown!");
  EXPECT_STREQ(Util::axisLockToText(-1), "unknown!");
}

TEST(RotationTexts, MotionReferencesHaveTexts) {
  EXPECT_EQ(Util::textToMotionReference("object"), 0);
  EXPECT_EQ(Util::textToMotionReference("my screen"), 1);
  EXPECT_EQ(Util::textToMotionReference(""), -1);
  EXPECT_STREQ(Util::motionReferenceToText(0), "object");
  EXPECT_STREQ(Util::motionReferenceToText(1), "screen");
  EXPECT_STREQ(Util::motionReferenceToText(2), "unknown!");
}

TEST(RotationTexts, RotationCenterModesHaveTexts) {
  const char* const texts[] = {"objscreen", "objorigin", "camstandard", "camtarget", "camhover"};
  for (int value = 0; value < 5; ++value) {
    EXPECT_EQ(Util::textToRotationCenterMode(texts[value]), value);
    EXPECT_STREQ(Util::rotationCenterModeToText(value), texts[value]);
  }
  EXPECT_EQ(Util::textToRotationCenterMode("objorigin objscreen"), 0);
  EXPECT_EQ(Util::textToRotationCenterMode("obj"), -1);
  EXPECT_STREQ(Util::rotationCenterModeToText(5), "unknown!");
}

TEST(TimeTexts, TimeOfDayHasTwelveCharacters) {
  std::string text(12, ' ');
  Util::writeTimeOfDay(text.data(), Util::utcMsOfDay());
  EXPECT_TRUE(std::regex_match(text, std::regex("[0-2]\\d:[0-5]\\d:[0-6]\\d\\.\\d{3}"))) << text;
}

TEST(TimeTexts, TimeOfDayIsZeroFilled) {
  std::string text(12, ' ');
  Util::writeTimeOfDay(text.data(), ((7 * 60 + 5) * 60 + 9) * 1000 + 42);
  EXPECT_EQ(text, "07:05:09.042");
  Util::writeTimeOfDay(text.data(), 24 * 60 * 60 * 1000 - 1);
  EXPECT_EQ(text, "23:59:59.999");
}

TEST(TimeTexts, TimeOfDayIsTheMachinesInUtc) {
  standin::clock::start(standin::clock::Kind::kReal);
  const std::time_t before = std::time(nullptr);
  const std::uint32_t seconds = Util::utcMsOfDay() / 1000;
  EXPECT_LE((seconds + 86400 - before % 86400) % 86400, 2);
}

TEST(TimeTexts, DateIsTheLocalDay) {
  const std::time_t before = std::time(nullptr);
  const std::string text = std::ctime(&before);
  EXPECT_EQ(Util::localDate(), text.substr(0, 11) + text.substr(20, 4));
}

TEST(TimeTexts, DayOfOneDigitIsPaddedByABlank) {
  std::tm time = {};
  time.tm_year = 126;
  time.tm_mon = 1;
  time.tm_mday = 3;
  time.tm_wday = 2;
  EXPECT_EQ(Util::dateText(time), "Tue Feb  3 2026");
  time.tm_mday = 13;
  EXPECT_EQ(Util::dateText(time), "Tue Feb 13 2026");
}

TEST(Folders, FoldersAreMadeOneAtATime) {
  const TempFolder folder;
  EXPECT_TRUE(Util::makeDirectory(folder.path("a")));
  EXPECT_TRUE(std::filesystem::is_directory(folder.root() / "a"));
}

TEST(Folders, FolderThatCannotBeMadeIsReportedOnStandardError) {
  const TempFolder folder;
  testing::internal::CaptureStderr();
  EXPECT_FALSE(Util::makeDirectory(folder.path("a\\b")));
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Directory '" + folder.path("a\\b") +
                                                        "' could not be created. Error: "
                                                        "No such file or directory\n");
}

TEST(Folders, FoldersAreNotRemovedYet) {
  const TempFolder folder;
  testing::internal::CaptureStdout();
  Util::removeFolders(folder.path(""));
  EXPECT_EQ(testing::internal::GetCapturedStdout(),
            "Util::removeFolders() is not implemented yet! '" + folder.path("") + "' not removed.\n");
  EXPECT_TRUE(std::filesystem::exists(folder.root()));
}

TEST(Debugging, StopForDebuggingIsPrinted) {
  testing::internal::CaptureStdout();
  Util::stopForDebugging();
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "Stopped for debugging ...\n");
}

TEST(Numbers, NumbersAreWrittenInAnyBaseOfTheAlphabet) {
  EXPECT_EQ(Util::numberToString(0, 10), "0");
  EXPECT_EQ(Util::numberToString(255, 16), "ff");
  EXPECT_EQ(Util::numberToString(35, 36), "z");
  EXPECT_EQ(Util::numberToString(5, 2), "101");
  EXPECT_EQ(Util::numberToString(-255, 16), "-ff");
  EXPECT_EQ(Util::numberToString(LONG_MIN, 10), std::to_string(LONG_MIN));
}

TEST(Numbers, NumbersHaveNoOtherBase) {
  for (const int base : {-1, 0, 1, 37}) EXPECT_EQ(Util::numberToString(7, base), "Base error") << base;
}

}  // namespace
