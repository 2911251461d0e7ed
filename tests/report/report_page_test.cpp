#include "sample_data.h"
#include "workbench/report/page_text.h"
#include "workbench/report/report_log.h"
#include "workbench/report/report_scene.h"
#include "workbench/report/report_shapes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <cmath>
#include <cstring>
#include <string>
#include <vector>

namespace workbench {
namespace {

using ::testing::ElementsAre;
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
  for (const char* reference : {" src=\"", " href=\"", "@import", "url(", "fetch("})
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

/// The numbers of a column, read back.
template <typename Number>
std::vector<Number> numbers(const Json& column) {
  static const std::string kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string bytes;
  unsigned block = 0;
  int bits = 0;
  for (const char digit : column.get<std::string>()) {
    if (digit == '=') break;
    block = block << 6 | static_cast<unsigned>(kDigits.find(digit));
    bits += 6;
    if (bits < 8) continue;
    bits -= 8;
    bytes += static_cast<char>(block >> bits & 255U);
  }
  std::vector<Number> values(bytes.size() / sizeof(Number));
  std::memcpy(values.data(), bytes.data(), values.size() * sizeof(Number));
  return values;
}

TEST(ReportScene, SceneHasEveryKeyForARunOfNothing) {
  const Json shapes =
      parsed(R"({"groups":[],"types":[],"handles":"","type":"","lines":"","points":"","xyz":""})");
  Json expected = parsed(R"({"drawing":"","session":"","clean":false,"summary":[],"shapes":null,"moments":[],
      "selected":[],"selections":[],"changes":null,"desktops":[],
      "passes":{"count":0,"all":0,"time":"","state":"","target":"","eye":"","up":"","field":""},
      "caps":{"count":0,"all":0,"time":"","axes":""},"modes":[],"toggles":[],"events":[],"problems":[],"lines":[],"functions":[],
      "keys":[],"log":{"count":0,"time":"","text":"","texts":[],"gap":0,"left_out":0},"log_note":"",
      "log_follows":false,"notes":[]})");
  expected["shapes"] = expected["changes"] = shapes;
  EXPECT_EQ(reportJson(ReportData{}), expected);
}

TEST(ReportScene, SceneGroupsShapesByLayerAndColour) {
  ReportData data;
  data.shapes = {lineShape(0x2A, "B", 0.25), lineShape(0xFFFFFFFFFFFFFFFF, "A", 3), lineShape(0, "B", -0.5)};
  data.shapes[1].type = "LINE";
  data.shapes[1].outline.push_back({AcGePoint3d(7, 8, 9)});
  const Json shapes = reportJson(data)["shapes"];
  EXPECT_EQ(shapes["groups"], parsed(R"([["A",1,1],["B",1,2]])"));
  EXPECT_EQ(shapes["types"], parsed(R"(["LINE",""])"));
  EXPECT_THAT(numbers<std::uint64_t>(shapes["handles"]), ElementsAre(0xFFFFFFFFFFFFFFFF, 0x2A, 0));
  EXPECT_THAT(numbers<std::uint8_t>(shapes["type"]), ElementsAre(0, 1, 1));
  EXPECT_THAT(numbers<std::uint32_t>(shapes["lines"]), ElementsAre(2, 1, 1));
  EXPECT_THAT(numbers<std::uint32_t>(shapes["points"]), ElementsAre(2, 1, 2, 2));
  EXPECT_THAT(numbers<double>(shapes["xyz"]), ElementsAre(3, 0, 0, 3, 1.5, -2, 7, 8, 9, 0.25, 0, 0, 0.25, 1.5,
                                                          -2, -0.5, 0, 0, -0.5, 1.5, -2));
}

TEST(ReportShapes, ShapesLeaveOutTheSmallestWhereThereIsNoRoom) {
  std::vector<ReportShape> shapes = {lineShape(1, "A", 0), lineShape(2, "A", 0), lineShape(3, "A", 0)};
  shapes[1].outline[0][1] = AcGePoint3d(0.1, 0, 0);
  std::vector<std::uint64_t> handles;
  for (const ReportShape* const shapeP : shapesForPage(shapes, 2 * sizeInPage(shapes[0])))
    handles.push_back(shapeP->handle);
  EXPECT_THAT(handles, ElementsAre(1, 3));
}

TEST(ReportScene, SceneNotesHowManyEntitiesAreLeftOut) {
  ReportData data;
  data.shapes.assign(300000, lineShape(1, "A", 0));
  const Json json = reportJson(data);
  const auto kept = json["shapes"]["groups"][0][2].get<std::size_t>();
  EXPECT_GT(kept, 200000U) << "so many are said to open";
  EXPECT_LT(kept, 300000U);
  EXPECT_EQ(json["notes"],
            Json::array({std::to_string(300000 - kept) +
                         " of 300000 entities, the smallest ones, are left out: the page would be "
                         "too large."}));
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
  EXPECT_EQ(json["changes"]["groups"], parsed(R"([["A",1,1]])"));
  EXPECT_THAT(numbers<double>(json["changes"]["xyz"]), ElementsAre(7, 0, 0, 7, 1.5, -2));
  for (const int moment : {1, 2}) {
    EXPECT_EQ(json["moments"][moment]["selection"], 1);
    EXPECT_EQ(json["moments"][moment]["changed"], parsed("[0]"));
  }
  EXPECT_EQ(json["moments"][2]["gone"], parsed(R"(["2B"])"));
}

TEST(ReportScene, SceneWritesPassesAsColumns) {
  ReportData data;
  const standin::host::Camera camera{{1e6 + 1, 2, 0}, {1e6, 0.1, -3}, {0, 0, 1}, 3, 4, true};
  data.passes = {{16, 1, true, true, camera, true}, {32, 2, false, false, {}, false}};
  const Json passes = reportJson(data)["passes"];
  EXPECT_EQ(passes["count"], 2);
  EXPECT_THAT(numbers<std::uint32_t>(passes["time"]), ElementsAre(16, 32));
  EXPECT_THAT(numbers<std::int32_t>(passes["state"]), ElementsAre(1 + 2 + 4 + 8 + 16, 32));
  EXPECT_THAT(numbers<double>(passes["target"]), ElementsAre(1e6, 0.1, -3, 0, 0, 0));
  const auto eye = numbers<float>(passes["eye"]);
  EXPECT_FLOAT_EQ(eye[0], 1);
  EXPECT_FLOAT_EQ(eye[1], 1.9F);
  EXPECT_FLOAT_EQ(eye[2], 3);
  EXPECT_EQ(numbers<float>(passes["up"])[2], 1);
  const auto field = numbers<float>(passes["field"]);
  EXPECT_EQ(field[0], 3);
  EXPECT_EQ(field[1], 4);
}

TEST(ReportScene, SceneThinsPassesBeyondWhatAPageCanHold) {
  ReportData data;
  for (int i = 0; i < 500000; ++i) data.passes.push_back({i, 2, false, false, {}});
  const Json json = reportJson(data);
  EXPECT_EQ(json["passes"]["all"], 500000);
  const auto times = numbers<std::uint32_t>(json["passes"]["time"]);
  EXPECT_EQ(json["passes"]["count"], times.size());
  EXPECT_EQ(times.size(), 166668U) << "every third, and the last";
  EXPECT_EQ(times.back(), 499999U);
  EXPECT_EQ(json["notes"],
            parsed(R"(["333332 of 500000 views are left out: the page would be too large."])"));
}

TEST(ReportScene, SceneLeavesOutLaterEventsWhereThereIsNoRoom) {
  ReportData data;
  data.events.assign(4000, {5, 3, std::string(1000, 'a')});
  const Json json = reportJson(data);
  EXPECT_GT(json["events"].size(), 3000U);
  EXPECT_LT(json["events"].size(), 3200U);
  EXPECT_THAT(json["notes"][0].get<std::string>(), HasSubstr(" of 4000 events of the session are left out"));
}

TEST(ReportScene, SceneLeavesOutSelectionsWhereThereIsNoRoom) {
  ReportData data;
  std::vector<std::uint64_t> many(500000, 0x2A);
  data.selections = {{1, {1}}, {2, many}, {3, {1}}};
  const Json json = reportJson(data);
  EXPECT_EQ(json["selected"], parsed("[[1,0],[2,null],[3,0]]"));
  EXPECT_EQ(json["notes"],
            parsed(R"(["1 changes of the selection are left out: the page would be too large."])"));
}

TEST(ReportScene, SceneKeepsWhatHappenedInOrder) {
  ReportData data;
  data.caps = {{5, {1, 2, 3, 4, 5, -6}}, {9, {0, 0, 0, 0, 0, 0}}};
  data.modes = {{4, 112, true}};
  data.toggles = {{0, true, false}, {6, false, true}};
  data.selections = {{7, {0x2A}}, {8, {}}};
  data.events = {{5, 3, "motion 1 2 3 4 5 6"}};
  data.problems = {{12, "a"}, {std::nullopt, "b"}};
  data.commandLine = {{7, "send", "'_-VIEW _FRONT "}, {8, "box", "caption\ntext"}};
  const Json json = reportJson(data);
  EXPECT_THAT(numbers<std::uint32_t>(json["caps"]["time"]), ElementsAre(5, 9));
  EXPECT_THAT(numbers<std::int16_t>(json["caps"]["axes"]), ElementsAre(1, 2, 3, 4, 5, -6, 0, 0, 0, 0, 0, 0));
  EXPECT_EQ(json["modes"], parsed("[[4,112,true]]"));
  EXPECT_EQ(json["toggles"], parsed("[[0,true,false],[6,false,true]]"));
  EXPECT_EQ(json["selected"], parsed("[[7,0],[8,1]]"));
  EXPECT_EQ(json["selections"], parsed(R"([["2A"],[]])"));
  EXPECT_EQ(json["events"], parsed(R"([[5,3,"motion 1 2 3 4 5 6"]])"));
  EXPECT_EQ(json["problems"], parsed(R"([[12,"a"],[null,"b"]])"));
  EXPECT_EQ(json["lines"], parsed(R"([[7,"send","'_-VIEW _FRONT "],[8,"box","caption\ntext"]])"));
}

TEST(ReportLog, LogWritesEachTextOnce) {
  const Json log = logJson("head\n07:05:09.042|INF| a\nmore\n07:05:10.001|INF| a\n", 1000);
  EXPECT_EQ(log["count"], 4);
  EXPECT_EQ(log["texts"], parsed(R"(["head","|INF| a","more"])"));
  EXPECT_THAT(numbers<std::uint32_t>(log["text"]), ElementsAre(0, 1, 2, 1));
  EXPECT_THAT(numbers<std::uint32_t>(log["time"]), ElementsAre(0, 25509042, 25509042, 25510001));
}

TEST(ReportLog, LogCountsDaysOn) {
  const Json log = logJson("23:59:59.999|INF| a\n00:00:00.010|INF| b\n00:00:00.009|INF| c\n", 1000);
  EXPECT_THAT(numbers<std::uint32_t>(log["time"]), ElementsAre(86399999, 86400010, 86400009));
}

TEST(ReportLog, LogLeavesOutItsMiddleWhereThereIsNoRoom) {
  std::string text;
  for (int i = 0; i < 100; ++i) text += "line " + std::to_string(10 + i) + "\n";
  const Json log = logJson(text, 1000);
  EXPECT_EQ(log["left_out"], 50);
  EXPECT_EQ(log["gap"], 25);
  EXPECT_EQ(log["texts"][24], "line 34");
  EXPECT_EQ(log["texts"][25], "line 85");
}

TEST(ReportPage, PageStaysSmallForTenThousandLinesAndSixtyMoments) {
  const std::string page = reportPage(report_sample::largeRun(10000, 60));
  EXPECT_LT(page.size(), 1300000U);
  EXPECT_GT(page.size(), 800000U) << "the lines are not there";
}

}  // namespace
}  // namespace workbench
