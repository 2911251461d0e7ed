#include "sample_data.h"
#include "workbench/report/page_text.h"
#include "workbench/report/report_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <string>

namespace workbench {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::ordered_json;

ReportShape lineShape(std::uint64_t handle, const std::string& layer, double x) {
  return {handle, layer, 1, {{AcGePoint3d(x, 0, 0), AcGePoint3d(x, 1.5, -2)}}};
}

std::size_t count(const std::string& text, const std::string& wanted) {
  std::size_t found = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) ++found;
  return found;
}

TEST(ReportPage, PageIsEqualForEqualData) {
  EXPECT_EQ(reportPage(report_sample::bundle()), reportPage(report_sample::bundle()));
}

TEST(ReportPage, PageIsWholeAndLeavesNoMarkUnfilled) {
  const std::string page = reportPage(report_sample::bundle());
  EXPECT_EQ(page.rfind("<!DOCTYPE html>", 0), 0U);
  EXPECT_THAT(page, HasSubstr("</html>"));
  EXPECT_THAT(page, Not(HasSubstr("@@")));
}

TEST(ReportPage, PageLoadsNothing) {
  const std::string page = reportPage(report_sample::bundle());
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  for (const char* reference : {"src=", "href=", "@import", "url(", "fetch("})
    EXPECT_THAT(page, Not(HasSubstr(reference)));
}

TEST(ReportPage, PageKeepsTextsThatLookLikeMarkupTexts) {
  const std::string harmless = reportPage(report_sample::emptyRun());
  const std::string page = reportPage(report_sample::hostileRun());
  EXPECT_EQ(count(page, "<script"), count(harmless, "<script"));
  EXPECT_EQ(count(page, "</script"), count(harmless, "</script"));
  EXPECT_EQ(count(page, "<!--"), 0U);
  EXPECT_THAT(page, HasSubstr("@@STYLE@@"));
}

TEST(ReportPage, PageNamesDrawingAndSessionInItsTitle) {
  ReportData data = report_sample::emptyRun();
  data.drawingName = "a<b.dxf";
  EXPECT_THAT(reportPage(data), HasSubstr("<title>a&lt;b.dxf \u2013 nothing.session</title>"));
}

Json parsed(const char* text) {
  return Json::parse(text);
}

TEST(ReportScene, SceneHasEveryKeyForARunOfNothing) {
  EXPECT_EQ(reportJson(ReportData{}),
            parsed(R"({"drawing":"","session":"","clean":false,"summary":[],"groups":[],
      "moments":[],"selected":[],"selections":[],"changes":[],"desktops":[],"passes":{"count":0,"all":0,"data":""},"caps":[],"events":[],"problems":[],"lines":[],"functions":[],"keys":[],
      "log":"","log_note":"","log_follows":false})"));
}

TEST(ReportScene, SceneGroupsShapesByLayerAndColour) {
  ReportData data;
  data.shapes = {lineShape(0x2A, "B", 0.25), lineShape(0xFFFFFFFFFFFFFFFF, "A", 3), lineShape(0, "B", -0.0)};
  EXPECT_EQ(reportJson(data)["groups"], parsed(R"([
      {"layer":"A","colour":1,"shapes":[["FFFFFFFFFFFFFFFF",[3.0,0.0,0.0,3.0,1.5,-2.0]]]},
      {"layer":"B","colour":1,"shapes":[["2A",[0.25,0.0,0.0,0.25,1.5,-2.0]],["0",[0.0,0.0,0.0,0.0,1.5,-2.0]]]}])"));
}

TEST(ReportScene, SceneWritesAMomentAsACameraInNumbers) {
  ReportData data;
  data.moments.resize(1);
  data.moments[0].timeMs = 1500;
  data.moments[0].cap = {1, -2, 3, -4, 5, -32768};
  data.moments[0].camera = {{10, -10, 10.5}, {0, 0, 0}, {0, 0, 1}, 40, 30, true};
  EXPECT_EQ(reportJson(data)["moments"], parsed(R"([{"time":1500,"cap":[1,-2,3,-4,5,-32768],"viewport":2,
      "camera":[10.0,-10.0,10.5,0.0,0.0,0.0,0.0,0.0,1.0,40.0,30.0,1],"selection":0}])"));
}

TEST(ReportScene, SceneWritesALayoutAsASheetWithAWindow) {
  ReportData data;
  data.moments.resize(2);
  for (ReportMoment& moment : data.moments) {
    moment.isLayout = true;
    moment.paper = {5, -2, 420, 297};
    moment.sheet = {210, 148.5, 420, 297};
    moment.window = {210, 148.5, 380, 257};
    moment.camera = {{0, 0, 1}, {0, 0, 0}, {0, 1, 0}, 40, 30, false};
  }
  data.moments[0].isPaper = true;
  data.moments[0].viewport = 1;
  const Json json = reportJson(data);
  const Json paper = parsed("[5.0,-2.0,420.0,297.0]");
  const Json camera = parsed("[0.0,0.0,1.0,0.0,0.0,0.0,0.0,1.0,0.0,40.0,30.0,0]");
  EXPECT_EQ(json["moments"][0]["viewport"], 1);
  EXPECT_EQ(json["moments"][0]["paper"], paper);
  EXPECT_EQ(json["moments"][0]["window"], camera);
  EXPECT_FALSE(json["moments"][0].contains("camera"));
  EXPECT_EQ(json["moments"][1]["paper"], paper);
  EXPECT_EQ(json["moments"][1]["camera"], camera);
  EXPECT_FALSE(json["moments"][1].contains("window"));
  for (const Json& moment : json["moments"]) {
    EXPECT_EQ(moment["sheet"], parsed("[210.0,148.5,420.0,297.0]"));
    EXPECT_EQ(moment["place"], parsed("[210.0,148.5,380.0,257.0]"));
  }
}

TEST(ReportScene, SceneWritesADesktopThatStaysOnce) {
  ReportData data;
  data.moments.resize(3);
  const ReportDesktop desktop{{{"Edit", {1, 2, 30, 40}, {}, ReportScrollBar{0, 300, 80, 5}}}, {7, 8}};
  data.moments[0].desktop = data.moments[1].desktop = desktop;
  const Json json = reportJson(data);
  EXPECT_EQ(json["moments"][0]["desktop"], 0);
  EXPECT_EQ(json["moments"][1]["desktop"], 0);
  EXPECT_FALSE(json["moments"][2].contains("desktop"));
  EXPECT_EQ(json["desktops"], parsed(R"([{"pointer":[7,8],"windows":[{"class":"Edit","rect":[1,2,30,40],
      "horizontal":[0,300,80,5]}]}])"));
}

TEST(ReportScene, SceneListsFunctionsAndKeys) {
  ReportData data;
  data.functions = {{"All", "_ZOOM;_ALL"}};
  data.keys = {{5, "key top", {"'_-VIEW _TOP "}, "from above"}, {9, "key fit", {}, ""}};
  EXPECT_EQ(reportJson(data)["functions"], parsed(R"([["All","_ZOOM;_ALL"]])"));
  EXPECT_EQ(reportJson(data)["keys"],
            parsed(R"([[5,"key top",["'_-VIEW _TOP "],"from above"],[9,"key fit",[],""]])"));
}

TEST(ReportScene, SceneWritesACameraThatIsNotANumberAsNull) {
  ReportData data;
  data.moments.resize(1);
  data.moments[0].camera.position.x = std::nan("");
  EXPECT_THAT(scriptJson(reportJson(data)), HasSubstr("\"camera\":[null,0.0,1.0,"));
}

TEST(ReportScene, SceneWritesWhatRecursOnce) {
  ReportData data;
  data.shapes = {lineShape(1, "A", 0)};
  data.moments.resize(3);
  data.moments[1].selection = data.moments[2].selection = {1, 2};
  data.moments[1].changed = data.moments[2].changed = {lineShape(1, "A", 7)};
  data.moments[2].gone = {0x2B};
  const Json json = reportJson(data);
  EXPECT_EQ(json["selections"], parsed(R"([[],["1","2"]])"));
  EXPECT_EQ(json["changes"],
            parsed(R"([{"layer":"A","colour":1,"shape":["1",[7.0,0.0,0.0,7.0,1.5,-2.0]]}])"));
  for (const int moment : {1, 2}) {
    EXPECT_EQ(json["moments"][moment]["selection"], 1);
    EXPECT_EQ(json["moments"][moment]["changed"], parsed("[0]"));
  }
  EXPECT_EQ(json["moments"][2]["gone"], parsed(R"(["2B"])"));
}

TEST(ReportScene, SceneWritesPassesAsNumbersInBase64) {
  ReportData data;
  data.passes = {{16, 1, true, true, {{1, 2, 0}, {0, 0, 0}, {0, 0, 0}, 3, 4, true}}};
  const Json passes = reportJson(data)["passes"];
  EXPECT_EQ(passes["count"], 1);
  // 16, then the state 1 + 2 + 4 + 8, then the camera.
  EXPECT_EQ(passes["data"].get<std::string>().substr(0, 32), "AAAAAAAAMEAAAAAAAAAuQAAAAAAAAPA/");
  EXPECT_EQ(passes["data"].get<std::string>().size(), (13 * 8 + 2) / 3 * 4u);
}

TEST(ReportScene, SceneThinsPassesBeyondWhatAPageCanHold) {
  ReportData data;
  for (int i = 0; i < 600000; ++i) data.passes.push_back({i, 2, false, false, {}});
  const Json passes = reportJson(data)["passes"];
  EXPECT_EQ(passes["all"], 600000);
  EXPECT_EQ(passes["count"], 200001) << "every third, and the last";
}

TEST(ReportScene, SceneKeepsWhatHappenedInOrder) {
  ReportData data;
  data.caps = {{5, {1, 2, 3, 4, 5, 6}}, {9, {0, 0, 0, 0, 0, 0}}};
  data.selections = {{7, {0x2A}}, {8, {}}};
  data.events = {{5, 3, "motion 1 2 3 4 5 6"}};
  data.problems = {{12, "a"}, {std::nullopt, "b"}};
  data.commandLine = {{7, "send", "'_-VIEW _FRONT "}, {8, "box", "caption\ntext"}};
  data.log = "one\ntwo\n";
  const Json json = reportJson(data);
  EXPECT_EQ(json["caps"], parsed("[5,1,2,3,4,5,6,9,0,0,0,0,0,0]"));
  EXPECT_EQ(json["selected"], parsed("[[7,0],[8,1]]"));
  EXPECT_EQ(json["selections"], parsed(R"([["2A"],[]])"));
  EXPECT_EQ(json["events"], parsed(R"([[5,3,"motion 1 2 3 4 5 6"]])"));
  EXPECT_EQ(json["problems"], parsed(R"([[12,"a"],[null,"b"]])"));
  EXPECT_EQ(json["lines"], parsed(R"([[7,"send","'_-VIEW _FRONT "],[8,"box","caption\ntext"]])"));
  EXPECT_EQ(json["log"], "one\ntwo\n");
}

TEST(ReportPage, PageStaysBelowAMegabyteForTenThousandLinesAndSixtyMoments) {
  const std::string page = reportPage(report_sample::largeRun(10000, 60));
  EXPECT_LT(page.size(), 1000000U);
  EXPECT_GT(page.size(), 400000U) << "the lines are not there";
}

}  // namespace
}  // namespace workbench
