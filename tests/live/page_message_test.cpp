#include "workbench/live/page_message.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

TEST(PageMessage, DeviceActionIsALineOfASession) {
  const PageMessage message = parsePageMessage(R"({"do": "motion 1 2 3 4 5 -32768", "n": 7})");
  const auto& action = std::get<PageDeviceAction>(message);
  EXPECT_EQ(std::get<DeviceEvent>(action.action).axes, (std::array<std::int16_t, 6>{1, 2, 3, 4, 5, -32768}));
  EXPECT_EQ(action.text, "motion 1 2 3 4 5 -32768");
  EXPECT_EQ(action.number, 7U);
}

TEST(PageMessage, UserActionIsALineOfASession) {
  const PageMessage message = parsePageMessage(R"({"do": "command LINE 0,0 3,4 "})");
  EXPECT_EQ(std::get<Command>(std::get<PageUserAction>(message).action).text, "LINE 0,0 3,4");
}

TEST(PageMessage, OthersHaveAKeyOfTheirOwn) {
  EXPECT_TRUE(std::holds_alternative<PageIsAwake>(parsePageMessage(R"({"awake": true})")));
  EXPECT_TRUE(std::holds_alternative<PageHasSeen>(parsePageMessage(R"({"seen": 3})")));
  EXPECT_TRUE(std::holds_alternative<PageTakesOver>(parsePageMessage(R"({"take": true})")));
  EXPECT_TRUE(std::holds_alternative<PageSaves>(parsePageMessage(R"({"save": true})")));
  EXPECT_TRUE(std::holds_alternative<PageWantsReport>(parsePageMessage(R"({"report": true})")));
  EXPECT_EQ(std::get<PageOpens>(parsePageMessage(R"({"open": 2})")).drawing, 2U);
  const auto settings =
      std::get<PageChangesSettings>(parsePageMessage(R"({"settings": {"minThreshold": "5"}})"));
  ASSERT_EQ(settings.values.size(), 1U);
  EXPECT_EQ(settings.values[0], (std::pair<std::string, std::string>("minThreshold", "5")));
}

TEST(PageMessage, WhatNoPageSendsIsRefused) {
  for (const char* text : {"",
                           "1",
                           "[]",
                           "{}",
                           "{\"do\":",
                           R"({"do": 1})",
                           R"({"do": "motion 1 2 3"})",
                           R"({"do": "dance"})",
                           R"({"do": ""})",
                           R"({"do": "motion 0 0 0 0 0 40000"})",
                           R"({"do": "key top", "n": -1})",
                           R"({"do": "key top", "n": 4294967296})",
                           R"({"do": "key top", "n": "1"})",
                           R"({"open": -1.5})",
                           R"({"open": "1"})",
                           R"({"settings": {"a": 1}})",
                           R"({"settings": 3})",
                           "{\"do\": \"key top\"} x",
                           R"({"other": true})",
                           "\xFF\xFE"})
    EXPECT_THROW(parsePageMessage(text), PageMessageError) << text;
}

TEST(PageMessage, SecondLineIsRefused) {
  EXPECT_THROW(parsePageMessage(R"({"do": "key top\n5 key fit"})"), PageMessageError);
  EXPECT_THROW(parsePageMessage(R"({"do": "key top\r"})"), PageMessageError);
  EXPECT_THROW(parsePageMessage(R"({"settings": {"name": "a\n[LOGGING]"}})"), PageMessageError);
}

TEST(PageMessage, TextThatASessionCannotHoldIsRefused) {
  EXPECT_THROW(parsePageMessage(R"({"do": "command LINE # 0,0"})"), PageMessageError);
  EXPECT_THROW(parsePageMessage(R"({"settings": {"name": "a # b"}})"), PageMessageError);
}

TEST(PageMessage, FilesAreNotReadForAPage) {
  for (const char* text :
       {R"({"do": "document open /etc/passwd.dxf"})", R"({"do": "document close"})", R"({"do": "menu"})",
        R"({"do": "end"})", R"({"do": "reload"})", R"({"do": "setting name x"})"})
    EXPECT_THROW(parsePageMessage(text), PageMessageError) << text;
}

TEST(PageMessage, EventByItsCodeIsRefused) {
  for (const char* text : {R"({"do": "event -1"})", R"({"do": " \tevent 0x31"})"})
    EXPECT_THROW(parsePageMessage(text), PageMessageError) << text;
}

TEST(PageMessage, DeepNestingIsRefused) {
  EXPECT_THROW(parsePageMessage(std::string(200000, '[')), PageMessageError);
}

}  // namespace
}  // namespace workbench
