#include "tests/workbench/fake_module_process.h"
#include "workbench/report/report.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace workbench {
namespace {

/// Time and kind of each row, and position x: what the order of events shows in.
std::string rowsOf(const std::string& trajectory) {
  std::string rows;
  std::istringstream lines(trajectory.substr(trajectory.find('\n') + 1));
  for (std::string line; std::getline(lines, line);) {
    std::vector<std::string> fields;
    std::istringstream parts(line);
    for (std::string part; std::getline(parts, part, ',');) fields.push_back(part);
    rows += fields.at(0) + " " + fields.at(1) + " cap " + fields.at(3) + " x " + fields.at(9) + "\n";
  }
  return rows;
}

TEST(Replay, PassesCommitsAndCapFollowTheSession) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("150 motion 7 0 0 0 0 0\n350 motion 0 0 0 0 0 0\n600 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(rowsOf(process.read("out/trajectory.csv")),
            "0 start cap 0 x 5\n"
            "200 pass3d cap 7 x 6\n"
            "300 pass3d cap 7 x 7\n"
            "400 commit cap 0 x 7\n");
}

TEST(Replay, DeviceComesBeforeTimersAndTimersBeforeTheUser) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("100 projection perspective\n100 motion 3 0 0 0 0 0\n150 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  const std::string rows = rowsOf(process.read("out/trajectory.csv"));
  EXPECT_EQ(rows.substr(0, rows.find("view")), "0 start cap 0 x 5\n100 pass3d cap 3 x 6\n116 ");
}

TEST(Replay, EventsDuringACallHappenInOrderOfTime) {
  // The pass at 100 takes until 250: then the user's event of 150 comes before the timer of 200, and the
  // timer of 300 comes too late.
  const FakeModuleProcess process;
  process.replay("50 motion 7 0 0 0 0 0\n150 projection perspective\n260 end\n", "--frame-ms 150");
  const std::string rows = rowsOf(process.read("out/trajectory.csv"));
  EXPECT_EQ(rows,
            "0 start cap 0 x 5\n"
            "100 pass3d cap 7 x 6\n"
            "250 view cap 7 x 6\n"
            "250 pass3d cap 7 x 7\n");
}

TEST(Replay, QueuedTextRunsWhenTheHostIsIdle) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("10 key top\n300 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(rowsOf(process.read("out/trajectory.csv")), "0 start cap 0 x 5\n100 view cap 0 x 5\n");
}

TEST(Replay, DrawingCallTakesTheFrameTime) {
  const FakeModuleProcess process;
  const std::string session = "50 motion 7 0 0 0 0 0\n101 projection perspective\n300 end\n";
  process.replay(session, "--frame-ms 40");
  EXPECT_NE(rowsOf(process.read("out/trajectory.csv")).find("140 view"), std::string::npos);
}

TEST(Replay, ModuleIsLoadedAgainDuringTheSession) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay(
      "50 motion 7 0 0 0 0 0\n150 reload\n250 motion 5 0 0 0 0 0\n450 motion 0 0 0 0 0 0\n900 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  // The second load does not know that the cap is held until the device says so.
  const std::string rows = rowsOf(process.read("out/trajectory.csv"));
  EXPECT_NE(rows.find("cap 5"), std::string::npos) << rows;
  EXPECT_NE(rows.find("commit cap 0"), std::string::npos) << rows;
}

TEST(Replay, SettingThatTheFileLacksEndsTheRun) {
  const FakeModuleProcess process;
  std::filesystem::create_directories(process.root() / "mine/Lumetrapad/Applications");
  process.write("mine/Lumetrapad/Applications/autocad_addin.ini", "[PROGRAM]\nspeed = 1 # of all\n");
  EXPECT_EQ(process.replay("10 setting speed 2\n20 reload\n", "--profile mine").status, 0);
  EXPECT_EQ(process.read("mine/Lumetrapad/Applications/autocad_addin.ini"),
            "[PROGRAM]\nspeed = 2 # of all\n");
  const Outcome outcome = process.replay("10 setting sped 2\n20 reload\n", "--profile mine");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_NE(outcome.err.find("expected a setting of that name, found \"sped\""), std::string::npos)
      << outcome.err;
}

TEST(Replay, PageHasTheTogglesOfEachLoad) {
  const FakeModuleProcess process;
  const auto toggles = [&](const char* session) {
    EXPECT_EQ(process.replay(session, "--profile mine").status, 0);
    const std::string page = process.bytes("out/index.html");
    return nlohmann::json::parse(reportPageData(page).value()).at("toggles").dump();
  };
  // The fake module writes no settings: the module's defaults hold.
  EXPECT_EQ(toggles("20 end\n"), "[[0,true,false]]");
  process.write("mine/Lumetrapad/Applications/autocad_addin.ini",
                "[PROGRAM]\ntoggleRotationCenter = off # a\ntoggleRotationAxis = off # b\n");
  EXPECT_EQ(toggles("10 setting toggleRotationAxis on\n20 reload\n90 end\n"),
            "[[0,false,false],[20,false,true]]");
}

TEST(Replay, SessionMayEndWhileTheCapIsHeld) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("50 motion 7 0 0 0 0 0\n250 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
}

TEST(Replay, EmptySessionRuns) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("# nothing\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(rowsOf(process.read("out/trajectory.csv")), "0 start cap 0 x 5\n");
}

TEST(Replay, TwoRunsAreEqualByteForByte) {
  const std::string session =
      "0 rotmode 110 zoom on\n20 motion 9 1 2 3 4 5\n170 key top\n180 select all\n300 motion 0 0 0 0 0 0\n"
      "310 device down\n320 motion 5 0 0 0 0 0\n330 device up\n400 command LINE 0,0 3,4 \n900 end\n";
  const FakeModuleProcess first, second;
  EXPECT_EQ(first.replay(session).status, 0);
  EXPECT_EQ(second.replay(session).status, 0);
  for (const char* name :
       {"trajectory.csv", "commandline.log", "entities.csv", "summary.json", "index.html"}) {
    const std::string text = first.read(std::string("out/") + name);
    EXPECT_FALSE(text.empty()) << name;
    EXPECT_EQ(text, second.read(std::string("out/") + name)) << name;
  }
}

TEST(Replay, SecondRunIntoTheSameFolderIsEqual) {
  const FakeModuleProcess process;
  const std::string session = "20 motion 9 0 0 0 0 0\n300 end\n";
  process.replay(session);
  const std::string first = process.read("out/trajectory.csv");
  process.write("out/profile/Lumetrapad/autocad_addin_log.txt", "of the run before");
  process.replay(session);
  EXPECT_EQ(process.read("out/trajectory.csv"), first);
  EXPECT_EQ(process.read("out/profile/Lumetrapad/autocad_addin_log.txt"), "");
}

TEST(Replay, ProfileOfTheUserIsKept) {
  const FakeModuleProcess process;
  std::filesystem::create_directories(process.root() / "mine/Lumetrapad");
  process.write("mine/Lumetrapad/autocad_addin_log.txt", "kept <log>");
  process.write("a.mnu", "[Modes]\n");
  EXPECT_EQ(process.replay("9 end\n", "--profile mine --menu a.mnu").status, 0);
  EXPECT_EQ(process.read("mine/Lumetrapad/autocad_addin_log.txt"), "kept <log>");
  EXPECT_EQ(process.read("mine/Lumetrapad/Applications/autocad.mnu"), "[Modes]\n");
  EXPECT_FALSE(std::filesystem::exists(process.root() / "out/profile"));
}

TEST(Replay, UnknownHandleIsReportedAndLeftOut) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("10 select 106 2a FF\n20 command ERASE\n30 select 106\n40 end\n");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.out.find("handles not found: FF, 106\nclean: yes\n"), std::string::npos) << outcome.out;
  const std::string log = process.read("out/commandline.log");
  EXPECT_NE(log.find("10 host \"No object with handle 106.\"\n10 host \"No object with handle FF.\"\n"),
            std::string::npos)
      << log;
  EXPECT_EQ(process.read("out/entities.csv").find("2A,LINE"), std::string::npos) << "2A was selected";
  const auto summary = nlohmann::json::parse(process.read("out/summary.json"));
  EXPECT_EQ(summary.at("handles_not_found"), nlohmann::json::array({"FF", "106"}));
  EXPECT_TRUE(summary.at("clean").get<bool>());
}

TEST(Replay, ErasedEntityCannotBeSelected) {
  const FakeModuleProcess process;
  EXPECT_EQ(process.replay("10 select 2A\n20 command ERASE\n30 select 2A\n40 end\n").status, 0);
  EXPECT_NE(process.read("out/commandline.log").find("30 host \"No object with handle 2A.\"\n"),
            std::string::npos);
}

TEST(Replay, RealTimeRunsTheSameSession) {
  const FakeModuleProcess process;
  const Outcome outcome =
      process.replay("20 motion 9 0 0 0 0 0\n700 motion 0 0 0 0 0 0\n2000 end\n", "--realtime");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(process.read("out/trajectory.csv").find("pass3d"), std::string::npos);
  EXPECT_NE(process.read("out/trajectory.csv").find("commit"), std::string::npos);
}

TEST(Replay, SummaryEndsWithThePathOfTheReport) {
  const FakeModuleProcess process;
  EXPECT_EQ(
      process.replay("9 end\n").out,
      "session: 9 ms\npasses in 3D: 0\npasses in 2D: 0\nviews committed: 0\ntexts sent: 0\nprints: 1\n"
      "document locks taken: 0\ndocument locks released: 0\ndevice events: 0\nentities: 1 CIRCLE, 1 LINE\n"
      "not understood: 1 TEXT\nclean: yes\nout/index.html\n");
  EXPECT_EQ(process.replay("9 end\n", "--quiet").out, "out/index.html\n");
}

}  // namespace
}  // namespace workbench
