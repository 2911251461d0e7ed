/// `workbench compare`: what it finds in two folders of results, and what it refuses.
#include "tests/workbench/fake_module_process.h"
#include "workbench/report/report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace workbench {
namespace {

using nlohmann::json;
using ::testing::HasSubstr;

/// The folders `a` and `b` with the results of one session; `compare` writes into `c`.
class Compare : public testing::Test {
 protected:
  Compare() {
    EXPECT_EQ(process.replay("150 motion 7 0 0 0 0 0\n350 motion 0 0 0 0 0 0\n600 end\n").status, 0);
    std::filesystem::rename(process / "out", process / "a");
    std::filesystem::copy(process / "a", process / "b", std::filesystem::copy_options::recursive);
  }

  Outcome compare(const std::string& arguments = "a b --out c") const {
    return process.run("compare " + arguments);
  }

  /// Replaces the one place of `before` in a file.
  void edit(const std::string& file, const std::string& before, const std::string& after) const {
    std::string text = process.bytes(file);
    const std::size_t at = text.find(before);
    ASSERT_NE(at, std::string::npos) << before;
    process.write(file, text.replace(at, before.size(), after));
  }

  json result() const { return json::parse(process.read("c/compare.json")); }

  FakeModuleProcess process;
};

TEST_F(Compare, EqualRunsGiveStatus0) {
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("\nThe runs are equal.\nc/index.html\n"));
  EXPECT_EQ(result().at("equal"), true);
}

TEST_F(Compare, TrajectoryHasItsFirstRowAndLargestDifferences) {
  // Position x of the second row, then of the fourth.
  edit("b/trajectory.csv", "200,pass3d,2,7,0,0,0,0,0,6,", "200,pass3d,2,7,0,0,0,0,0,6.5,");
  edit("b/trajectory.csv", "400,commit,2,0,0,0,0,0,0,7,", "400,commit,2,0,0,0,0,0,0,3,");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("trajectory: first difference in line 3: px (200 ms)\n"
                                     "trajectory: px differs in 2 rows, by at most 4: line 5, 7 and 3\n"
                                     "The runs differ.\n"));
  EXPECT_EQ(result().at("first"), json({{"line", 3}, {"time_ms", {200, 200}}, {"columns", {"px"}}}));
  EXPECT_EQ(result().at("columns"), json::array({{{"column", "px"},
                                                  {"rows", 2},
                                                  {"largest", 4.0},
                                                  {"line", 5},
                                                  {"time_ms", {400, 400}},
                                                  {"values", {7, 3}}}}));
}

TEST_F(Compare, InfiniteNumberIsTheLargestDifference) {
  edit("b/trajectory.csv", "200,pass3d,2,7,0,0,0,0,0,6,", "200,pass3d,2,7,0,0,0,0,0,inf,");
  edit("b/trajectory.csv", "400,commit,2,0,0,0,0,0,0,7,", "400,commit,2,0,0,0,0,0,0,3,");
  EXPECT_EQ(compare().status, 1);
  EXPECT_EQ(result().at("columns").at(0).at("largest"), nullptr);
  EXPECT_EQ(result().at("columns").at(0).at("line"), 3);
}

TEST_F(Compare, RowThatOneRunLacksIsADifference) {
  const std::string whole = process.bytes("a/trajectory.csv");
  process.write("b/trajectory.csv", whole.substr(0, whole.rfind('\n', whole.size() - 2) + 1));
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("trajectory: first difference in line 5: only A has it (400 ms)\n"));
  EXPECT_EQ(result().at("rows"), json({4, 3}));
}

TEST_F(Compare, TextsOfOneRunOnlyAreListed) {
  process.write("a/commandline.log", "1 send \"x\"\n2 host \"y\"\n2 host \"y\"\n");
  process.write("b/commandline.log", "2 host \"y\"\n3 print \"z\"\n");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("texts: only A, line 1: 1 send \"x\"\n"
                                     "texts: only A, line 3: 2 host \"y\"\n"
                                     "texts: only B, line 2: 3 print \"z\"\n"));
}

TEST_F(Compare, OtherOrderOfTheSameTextsIsADifference) {
  process.write("a/commandline.log", "1 send \"x\"\n2 host \"y\"\n2 host \"z\"\n");
  process.write("b/commandline.log", "1 send \"x\"\n2 host \"z\"\n2 host \"y\"\n");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("texts: the same in another order, first in line 2: 2 host \"y\"\n"));
}

TEST_F(Compare, EntitiesAreComparedByHandle) {
  process.write("a/entities.csv",
                "handle,type,layer,points\n2A,LINE,0,0 0 0;1 0 0\n2B,POINT,0,1 1 1\n2C,LINE,\"a,\"\"\nb\",0 "
                "0 0;5 0 0\n");
  process.write(
      "b/entities.csv",
      "handle,type,layer,points\n2C,LINE,\"a,\"\"\nb\",0 0 0;5 3 4\n2A,LINE,1,0 0 0;1 0 0\n2D,ARC,0,0 0 0\n");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("entities: only A: POINT 2B\n"
                                     "entities: only B: ARC 2D\n"
                                     "entities: LINE 2C differs in points, moved by at most 5\n"
                                     "entities: LINE 2A differs in layer\n"));
}

TEST_F(Compare, SummaryIsComparedKeyByKey) {
  edit("b/summary.json", "\"commits\": 1", "\"commits\": 2");
  edit("b/summary.json", "\"session\": \"a.session\"", "\"session\": \"b.session\"");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 1) << outcome.err;
  EXPECT_THAT(outcome.out, HasSubstr("summary: commits: 1 and 2\nThe runs differ.\n"));
}

TEST_F(Compare, LongListsArePrintedInPart) {
  std::string lines;
  for (int i = 0; i < 25; ++i) lines += std::to_string(i) + " beep \"\"\n";
  process.write("b/commandline.log", lines);
  const Outcome outcome = compare();
  EXPECT_THAT(outcome.out, HasSubstr("texts: only B, line 20: 19 beep \"\"\n"
                                     "texts: ... and 5 more, see compare.json\n"));
  EXPECT_EQ(result().at("lines_only").at(1).size(), 25u);
}

TEST_F(Compare, ComparisonPageHasBothRuns) {
  edit("b/summary.json", "\"commits\": 1", "\"commits\": 2");
  ASSERT_EQ(compare().status, 1);
  const std::string page = process.bytes("c/index.html");
  const json data = json::parse(reportPageData(page).value());
  EXPECT_EQ(data.at("compared"), result());
  EXPECT_EQ(data.at("other").at("drawing"), "a.dxf");
  EXPECT_EQ(data.at("other").at("passes"), data.at("passes"));
  EXPECT_TRUE(data.contains("shapes"));
  EXPECT_FALSE(data.at("other").contains("shapes"));
}

struct BrokenFile {
  const char* file;
  const char* text;
  const char* message;
};

TEST_F(Compare, BrokenResultFileIsNamedWithItsLine) {
  const std::string rows = process.bytes("a/trajectory.csv");
  const std::string header = rows.substr(0, rows.find('\n') + 1);
  const std::string noNumber = header + "1,start,2,x,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,parallel\n";
  const std::string noKind = header + "1,begin,2,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,parallel\n";
  const std::string fewFields = header + "1,start\n";
  const std::string cut = rows.substr(0, rows.size() - 5);
  const BrokenFile table[] = {
      {"trajectory.csv", noNumber.c_str(), ":2: expected a number, found \"x\""},
      {"trajectory.csv", noKind.c_str(), ":2: expected a kind of row, found \"begin\""},
      {"trajectory.csv", fewFields.c_str(), ":2: expected 21 fields, found 2"},
      {"trajectory.csv", cut.c_str(), ":5: expected a line end after the last row"},
      {"trajectory.csv", "", ":1: expected a line end after the last row, found an empty file"},
      {"trajectory.csv", "a,b\n", ":1: expected the columns time_ms,kind,"},
      {"commandline.log", "1 host \"x\"\n1 shout \"x\"\n", ":2: expected TIME_MS KIND \"TEXT\""},
      {"commandline.log", "1 host x\n", ":1: expected TIME_MS KIND \"TEXT\""},
      {"commandline.log", "1 host \"x\"", ":1: expected TIME_MS KIND \"TEXT\""},
      {"entities.csv", "handle,type,layer,points\nG,LINE,0,\n",
       ":2: expected a handle (hexadecimal), found \"G\""},
      {"entities.csv", "handle,type,layer,points\n1,LINE,0,1 2\n", ":2: expected points as x y z"},
      {"entities.csv", "handle,type,layer,points\n1,LINE,0,\n1,LINE,0,\n",
       ":3: expected a handle that no other row has, found \"1\""},
      {"summary.json", "{\n\"clean\": tr", ":2: expected the summary of a run (JSON), found what is no JSON"},
      {"summary.json", "[]", ":1: expected the summary of a run (JSON), found other JSON"},
      {"index.html", "<html>", ": expected the report of a run of this version of the workbench"}};
  for (const auto& [file, text, message] : table)
    for (const std::string run : {"a", "b"}) {
      const std::string name = run + "/" + file;
      const std::string before = process.bytes(name);
      process.write(name, text);
      const Outcome outcome = compare();
      EXPECT_EQ(outcome.status, 2) << name << message;
      EXPECT_EQ(outcome.err.rfind("workbench: " + name + message, 0), 0u) << outcome.err;
      EXPECT_FALSE(process.has("c"));
      process.write(name, before);
    }
}

TEST_F(Compare, MissingResultFileIsNamed) {
  std::filesystem::remove(process / "b/entities.csv");
  const Outcome outcome = compare();
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "workbench: b/entities.csv: expected a table of a run, found no such file\n");
}

TEST_F(Compare, RunIsNotOverwritten) {
  const std::string before = process.bytes("a/index.html");
  EXPECT_EQ(compare("a b --out b/../a").err,
            "workbench: b/../a: expected another folder for the comparison, found that of a run\n");
  EXPECT_EQ(compare("a c --out d").err,
            "workbench: c: expected a folder that a replay has written, found no such folder\n");
  EXPECT_EQ(process.bytes("a/index.html"), before);
}

}  // namespace
}  // namespace workbench
