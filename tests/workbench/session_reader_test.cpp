#include "device/lmt_ctrlr.h"
#include "workbench/input_error.h"
#include "workbench/sessions/session.h"
#include "workbench/sessions/session_limits.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

std::string errorOf(const std::string& text) {
  try {
    parseSession(text, "a.session");
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

DeviceEvent eventOf(const std::string& line) {
  return std::get<DeviceEvent>(parseSession(line, "a.session").device.at(0).action);
}

TEST(SessionReader, ReaderReadsTheExampleOfEveryVerb) {
  const Session session = parseSession(
      "0     rotmode 010 zoom on        # advanced settings\n"
      "100   motion 0 0 0 0 350 0\n\n"
      "# nothing but a comment\n"
      "1000  key top\r\n1200\tfunction 3\n1250  event 0x20013\n1300  select all\n"
      "1400  command LM_Toggle_Object_Move_Mode\n1500  setvar TILEMODE 0\n1600  projection perspective\n"
      "1700  pointer tree\n1800  device down\n1900 menu\n2500  end\n",
      "a.session");
  EXPECT_EQ(session.device.size(), 6u);
  EXPECT_EQ(session.user.size(), 6u);
  EXPECT_EQ(session.endMs, 2500);
  EXPECT_EQ(session.device[1].line, 2u);
  EXPECT_EQ(session.user[4].line, 12u);
}

TEST(SessionReader, RotmodeCarriesItsCodeAndTheZoomSwitch) {
  const Session session = parseSession("0 rotmode 010 zoom on\n5 rotmode 999 zoom off", "a.session");
  EXPECT_EQ(std::get<AdvancedSettings>(session.device[0].action).rotationMode, 10);
  EXPECT_TRUE(std::get<AdvancedSettings>(session.device[0].action).isZoomAfterView);
  EXPECT_EQ(std::get<AdvancedSettings>(session.device[1].action).rotationMode, 999);
  EXPECT_FALSE(std::get<AdvancedSettings>(session.device[1].action).isZoomAfterView);
}

SetDocument documentOf(const std::string& line) {
  return std::get<SetDocument>(parseSession(line, "a.session").user.at(0).action);
}

TEST(SessionReader, DocumentIsOpenedClosedOrSwitchedByName) {
  EXPECT_EQ(documentOf("0 document open other part.dxf  # its folder is the session's").kind,
            SetDocument::Kind::kOpen);
  EXPECT_EQ(documentOf("0 document open other part.dxf ").name, "other part.dxf");
  EXPECT_EQ(documentOf("0 document close").kind, SetDocument::Kind::kClose);
  EXPECT_EQ(documentOf("0 document Drawing1.dwg").kind, SetDocument::Kind::kSwitch);
  EXPECT_EQ(documentOf("0 document opening.dwg").name, "opening.dwg");
}

TEST(SessionReader, DocumentWithoutANameIsRefused) {
  EXPECT_EQ(errorOf("0 document"),
            "a.session:1: expected open, close or the name of a document, found the end of the line");
  EXPECT_EQ(errorOf("0 document open "),
            "a.session:1: expected the name of a document, found the end of the line");
}

TEST(SessionReader, ViewportTakesANumberFrom1On) {
  EXPECT_EQ(std::get<SetViewport>(parseSession("0 viewport 3", "a").user.at(0).action).number, 3);
  EXPECT_EQ(errorOf("0 viewport 0"),
            "a.session:1: expected the number of a viewport (a whole number, 1 to 32767), found \"0\"");
}

TEST(SessionReader, MotionTakesTheWholeRangeOfTheCap) {
  const DeviceEvent event = eventOf("0 motion -32768 32767 +1 0 -1 350");
  EXPECT_LT(event.code, 0);
  EXPECT_EQ(event.axes, (std::array<std::int16_t, 6>{-32768, 32767, 1, 0, -1, 350}));
}

TEST(SessionReader, KeysAndFunctionsAreEventCodes) {
  const std::pair<const char*, std::int32_t> table[] = {
      {"0 key front", LM_VIEW_FRONT},     {"0 key right", LM_VIEW_RIGHT},
      {"0 key top", LM_VIEW_TOP},         {"0 key back", LM_VIEW_BACK},
      {"0 key left", LM_VIEW_LEFT},       {"0 key bottom", LM_VIEW_BOTTOM},
      {"0 key fit", LM_FIT_ALL},          {"0 function 0", 0x20020},
      {"0 function 5", 0x20025},          {"0 event 0x20013", LM_SEND_APPL_MODE},
      {"0 event 131104", 0x20020},        {"0 event 0", 0},
      {"0 event 0x7FFFFFFF", 0x7FFFFFFF}, {"0 event -7", -7}};
  for (const auto& [line, code] : table) EXPECT_EQ(eventOf(line).code, code) << line;
}

TEST(SessionReader, EventBelowZeroCarriesTheCap) {
  const Session session = parseSession("0 motion 1 2 3 4 5 6\n9 event -2147483648", "a.session");
  const auto& event = std::get<DeviceEvent>(session.device[1].action);
  EXPECT_EQ(event.axes, (std::array<std::int16_t, 6>{1, 2, 3, 4, 5, 6}));
}

TEST(SessionReader, SelectTakesAllNoneOrHandles) {
  const Session session = parseSession("0 select all\n0 select none\n0 select 2A 2b F", "a.session");
  EXPECT_EQ(std::get<Select>(session.user[0].action).kind, Select::Kind::kAll);
  EXPECT_EQ(std::get<Select>(session.user[1].action).kind, Select::Kind::kNone);
  EXPECT_EQ(std::get<Select>(session.user[2].action).handles, (std::vector<std::uint64_t>{0x2A, 0x2B, 0xF}));
}

TEST(SessionReader, CommandIsTheRestOfTheLineUpToAComment) {
  const Session session = parseSession("0 command  LINE 0,0 1,1   # a line", "a.session");
  EXPECT_EQ(std::get<Command>(session.user[0].action).text, "LINE 0,0 1,1");
}

TEST(SessionReader, SessionWithoutEndEndsWithItsLastEvent) {
  EXPECT_EQ(parseSession("0 select all\n70 key fit", "a.session").endMs, 70);
  EXPECT_EQ(parseSession("", "a.session").endMs, 0);
}

TEST(SessionReader, EveryMistakeNamesFileLineAndWhatWasExpected) {
  const std::pair<const char*, const char*> table[] = {
      {"x key top", "a.session:1: expected a time in ms (a whole number, 0 to 604800000), found \"x\""},
      {"-1 end", "a.session:1: expected a time in ms (a whole number, 0 to 604800000), found \"-1\""},
      {"1.5 end", "a.session:1: expected a time in ms (a whole number, 0 to 604800000), found \"1.5\""},
      {"\x89PNG\r\n\x1A\n",
       "a.session:1: expected a time in ms (a whole number, 0 to 604800000), found \"\\x89PNG\""},
      {"5 key top\n4 key top", "a.session:2: expected a time not before 5, found \"4\""},
      {"0 end\n1 key top", "a.session:2: expected nothing after the event \"end\", found \"1 key top\""},
      {"0 end now", "a.session:1: expected the end of the line, found \"now\""},
      {"0 motion 1 2 3 4 5",
       "a.session:1: expected rz (a whole number, -32768 to 32767), found the end of the line"},
      {"0 motion 1 2 3 4 5 6 7", "a.session:1: expected the end of the line, found \"7\""},
      {"0 motion 32768 0 0 0 0 0",
       "a.session:1: expected x (a whole number, -32768 to 32767), found \"32768\""},
      {"0 motion 0 -32769 0 0 0 0",
       "a.session:1: expected y (a whole number, -32768 to 32767), found \"-32769\""},
      {"0 motion 0 0 1e3 0 0 0", "a.session:1: expected z (a whole number, -32768 to 32767), found \"1e3\""},
      {"0 rotmode 1000 zoom on",
       "a.session:1: expected a rotation-mode code (a whole number, 0 to 999), found \"1000\""},
      {"0 rotmode 10", "a.session:1: expected one of zoom, found the end of the line"},
      {"0 rotmode 10 zoom yes", "a.session:1: expected one of on off, found \"yes\""},
      {"0 key up", "a.session:1: expected one of front right top back left bottom fit, found \"up\""},
      {"0 function -1",
       "a.session:1: expected an application function (a whole number, 0 to 2147352543), found \"-1\""},
      {"0 event 0x80000000",
       "a.session:1: expected an event code (32 bits, decimal or 0x...), found \"0x80000000\""},
      {"0 device on", "a.session:1: expected one of down up, found \"on\""},
      {"0 select", "a.session:1: expected all, none or handles (hexadecimal), found the end of the line"},
      {"0 select 2A xyz", "a.session:1: expected all, none or handles (hexadecimal), found \"xyz\""},
      {"0 select 0", "a.session:1: expected all, none or handles (hexadecimal), found \"0\""},
      {"0 command # none", "a.session:1: expected a command, found the end of the line"},
      {"0 setvar TILEMODE", "a.session:1: expected a value for \"TILEMODE\", found the end of the line"},
      {"0 projection flat", "a.session:1: expected one of parallel perspective, found \"flat\""},
      {"0 pointer desk", "a.session:1: expected one of canvas tree list edit qt none, found \"desk\""}};
  for (const auto& [text, message] : table) EXPECT_EQ(errorOf(text), message);
}

TEST(SessionReader, EnterIsACommandWithoutText) {
  const Session session = parseSession("5 enter\n", "a.session");
  ASSERT_EQ(session.user.size(), 1U);
  EXPECT_EQ(std::get<Command>(session.user[0].action).text, "");
}

TEST(SessionReader, SettingMayBeEmpty) {
  const Session session =
      parseSession("5 setting fileToLog\n6 setting name My plug-in\n7 reload\n", "a.session");
  ASSERT_EQ(session.user.size(), 3U);
  EXPECT_EQ(std::get<ChangeSetting>(session.user[0].action).value, "");
  EXPECT_EQ(std::get<ChangeSetting>(session.user[1].action).key, "name");
  EXPECT_EQ(std::get<ChangeSetting>(session.user[1].action).value, "My plug-in");
  EXPECT_TRUE(std::holds_alternative<LoadAgain>(session.user[2].action));
}

TEST(SessionReader, UnknownVerbIsReportedWithAllVerbs) {
  EXPECT_EQ(errorOf("0 jump 1"),
            "a.session:1: expected one of rotmode motion key function event device select command enter "
            "setvar projection pointer document viewport setting reload menu end, found \"jump\"");
}

TEST(SessionReader, MissingFileIsReported) {
  try {
    readSession("/nowhere/a.session");
    FAIL();
  } catch (const InputError& error) {
    EXPECT_STREQ(error.what(), "/nowhere/a.session: expected a session, found no such file");
  }
}

std::string motionErrorOf(const std::string& text, std::uint32_t frameMs) {
  try {
    checkMotion(parseSession(text, "a.session"), frameMs);
  } catch (const InputError& error) {
    return error.what();
  }
  return "no error";
}

TEST(SessionLimits, MotionIsLimitedInAll) {
  const std::string error =
      "a.session:3: expected a cap that is deflected for at most 4000000 ms in all (2000000 drawing calls), "
      "found one that still is after that";
  // A key in between does not end a motion, and a released cap may last.
  const std::string held = "0 motion 1 0 0 0 0 0\n2000000 motion 0 0 0 0 0 0\n9000000 motion 0 0 0 0 0 1\n";
  EXPECT_EQ(motionErrorOf(held + "9000000 key top\n11000001 end\n", 2), error);
  EXPECT_EQ(motionErrorOf(held + "9000000 key top\n11000000 end\n", 2), "no error");
  EXPECT_EQ(motionErrorOf(held + "11000001 end\n", 3), "no error");
}

}  // namespace
}  // namespace workbench
