#include "sample_data.h"
#include "workbench/report/report_scene.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace workbench {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

ReportShape lineShape(std::uint64_t handle, const std::string& layer, double x) {
  return {handle, layer, 1, {{AcGePoint3d(x, 0, 0), AcGePoint3d(x, 1.5, -2)}}};
}

std::size_t count(const std::string& text, const std::string& wanted) {
  std::size_t found = 0;
  for (std::size_t at = text.find(wanted); at != std::string::npos; at = text.find(wanted, at + 1)) ++found;
  return found;
}

TEST(ReportPage, EqualDataGiveEqualPages) {
  EXPECT_EQ(reportPage(report_sample::bundle()), reportPage(report_sample::bundle()));
}

TEST(ReportPage, IsWholeAndLeavesNoMarkUnfilled) {
  const std::string page = reportPage(report_sample::bundle());
  EXPECT_EQ(page.rfind("<!DOCTYPE html>", 0), 0U);
  EXPECT_THAT(page, HasSubstr("</html>"));
  EXPECT_THAT(page, Not(HasSubstr("@@")));
}

TEST(ReportPage, AsksForNothingBeyondItself) {
  const std::string page = reportPage(report_sample::bundle());
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  for (const char* reference : {"src=", "href=", "@import", "url(", "fetch("})
    EXPECT_THAT(page, Not(HasSubstr(reference)));
}

TEST(ReportPage, TextsThatLookLikeMarkupStayTexts) {
  const std::string harmless = reportPage(report_sample::emptyRun());
  const std::string page = reportPage(report_sample::hostileRun());
  EXPECT_EQ(count(page, "<script"), count(harmless, "<script"));
  EXPECT_EQ(count(page, "</script"), count(harmless, "</script"));
  EXPECT_EQ(count(page, "<!--"), 0U);
  EXPECT_THAT(page, HasSubstr("@@STYLE@@"));
}

TEST(ReportPage, TheTitleNamesDrawingAndSession) {
  ReportData data = report_sample::emptyRun();
  data.drawingName = "a<b.dxf";
  EXPECT_THAT(reportPage(data), HasSubstr("<title>a&lt;b.dxf \u2013 nothing.session</title>"));
}

TEST(ReportScene, OfNothingIsWholeAndEmpty) {
  EXPECT_EQ(reportJson(ReportData{}),
            "{\"drawing\":\"\",\"session\":\"\",\"clean\":false,\n\"summary\":[],\n\"groups\":[],"
            "\n\"moments\":[],\n"
            "\"selections\":[],\n\"changes\":[],\n\"desktops\":[],\n\"path\":[],\n\"lines\":[],\n"
            "\"functions\":[],\n\"keys\":[],\n\"layout\":{\"sheet\":[0,0,1,1],\"window\":[0,0,1,1]},\n"
            "\"log\":\"\"}");
}

TEST(ReportScene, ShapesAreGroupedByLayerAndColour) {
  ReportData data;
  data.shapes = {lineShape(0x2A, "B", 0.25), lineShape(0xFFFFFFFFFFFFFFFF, "A", 3), lineShape(0, "B", -0.0)};
  EXPECT_THAT(
      reportJson(data),
      HasSubstr(
          "\"groups\":[{\"layer\":\"A\",\"colour\":1,\"shapes\":[[\"FFFFFFFFFFFFFFFF\",[3,0,0,3,1.5,-2]]]},"
          "{\"layer\":\"B\",\"colour\":1,\"shapes\":[[\"2A\",[0.25,0,0,0.25,1.5,-2]],"
          "[\"0\",[0,0,0,0,1.5,-2]]]}]"));
}

TEST(ReportScene, AMomentIsACameraInNumbers) {
  ReportData data;
  data.moments.resize(1);
  data.moments[0].timeMs = 1500;
  data.moments[0].cap = {1, -2, 3, -4, 5, -32768};
  data.moments[0].camera = {{10, -10, 10.5}, {0, 0, 0}, {0, 0, 1}, 40, 30, true};
  EXPECT_THAT(reportJson(data),
              HasSubstr("\"moments\":[{\"time\":1500,\"cap\":[1,-2,3,-4,5,-32768],\"viewport\":2,"
                        "\"camera\":[10,-10,10.5,0,0,0,0,0,1,40,30,1],\"selection\":0}]"));
}

TEST(ReportScene, ALayoutIsASheetWithAWindow) {
  ReportData data;
  data.moments.resize(2);
  for (ReportMoment& moment : data.moments) {
    moment.isLayout = true;
    moment.paper = {5, -2, 420, 297};
    moment.camera = {{0, 0, 1}, {0, 0, 0}, {0, 1, 0}, 40, 30, false};
  }
  data.moments[0].isPaper = true;
  data.moments[0].viewport = 1;
  data.layout = {{210, 148.5, 420, 297}, {210, 148.5, 380, 257}};
  const std::string json = reportJson(data);
  EXPECT_THAT(json, HasSubstr("\"viewport\":1,\"paper\":[5,-2,420,297],"
                              "\"window\":[0,0,1,0,0,0,0,1,0,40,30,0],\"selection\":0}"));
  EXPECT_THAT(json, HasSubstr("\"viewport\":2,\"paper\":[5,-2,420,297],"
                              "\"camera\":[0,0,1,0,0,0,0,1,0,40,30,0],\"selection\":0}"));
  EXPECT_THAT(json, HasSubstr("\"layout\":{\"sheet\":[210,148.5,420,297],\"window\":[210,148.5,380,257]}"));
}

TEST(ReportScene, ADesktopThatStaysIsWrittenOnce) {
  ReportData data;
  data.moments.resize(3);
  const ReportDesktop desktop{{{"Edit", {1, 2, 30, 40}, {}, ReportScrollBar{0, 300, 80, 5}}}, {7, 8}};
  data.moments[0].desktop = data.moments[1].desktop = desktop;
  const std::string json = reportJson(data);
  EXPECT_EQ(count(json, "\"selection\":0,\"desktop\":0}"), 2U);
  EXPECT_THAT(json, HasSubstr("\"desktops\":[{\"pointer\":[7,8],\"windows\":[{\"class\":\"Edit\","
                              "\"rect\":[1,2,30,40],\"horizontal\":[0,300,80,5]}]}]"));
}

TEST(ReportScene, FunctionsAndKeysAreLists) {
  ReportData data;
  data.functions = {{"All", "_ZOOM;_ALL"}};
  data.keys = {{5, "key top", {"'_-VIEW _TOP "}, "from above"}, {9, "key fit", {}, ""}};
  EXPECT_THAT(reportJson(data),
              HasSubstr("\"functions\":[[\"All\",\"_ZOOM;_ALL\"]],\n\"keys\":[[5,\"key top\","
                        "[\"'_-VIEW _TOP \"],\"from above\"],[9,\"key fit\",[],\"\"]]"));
}

TEST(ReportScene, ACameraThatIsNotANumberIsNull) {
  ReportData data;
  data.moments.resize(1);
  data.moments[0].camera.position.x = std::nan("");
  EXPECT_THAT(reportJson(data), HasSubstr("\"camera\":[null,0,1,"));
}

TEST(ReportScene, WhatRecursIsWrittenOnce) {
  ReportData data;
  data.shapes = {lineShape(1, "A", 0)};
  data.moments.resize(3);
  data.moments[1].selection = data.moments[2].selection = {1, 2};
  data.moments[1].changed = data.moments[2].changed = {lineShape(1, "A", 7)};
  data.moments[2].gone = {0x2B};
  const std::string json = reportJson(data);
  EXPECT_THAT(json, HasSubstr("\"selections\":[[],[\"1\",\"2\"]]"));
  EXPECT_THAT(json,
              HasSubstr("\"changes\":[{\"layer\":\"A\",\"colour\":1,\"shape\":[\"1\",[7,0,0,7,1.5,-2]]}]"));
  EXPECT_EQ(count(json, "\"selection\":1,\"changed\":[0]"), 2U);
  EXPECT_EQ(count(json, "\"changed\":[0],\"gone\":[\"2B\"]}"), 1U);
}

TEST(ReportScene, PathLinesAndLogAreInOrder) {
  ReportData data;
  data.cameraPath = {{0, {1, 2, 3}}, {16, {1.5, 2, 3}}};
  data.commandLine = {{7, "send", "'_-VIEW _FRONT "}, {8, "box", "caption\ntext"}};
  data.log = "one\ntwo\n";
  EXPECT_THAT(reportJson(data),
              HasSubstr("\"path\":[0,1,2,3,16,1.5,2,3],\n\"lines\":[[7,\"send\",\"'_-VIEW _FRONT \"],"
                        "[8,\"box\",\"caption\\ntext\"]],\n"));
  EXPECT_THAT(reportJson(data), HasSubstr(",\n\"log\":\"one\\ntwo\\n\"}"));
}

TEST(ReportPage, TenThousandLinesAndSixtyMomentsStayBelowAMegabyte) {
  const std::string page = reportPage(report_sample::largeRun(10000, 60));
  EXPECT_LT(page.size(), 1000000U);
  EXPECT_GT(page.size(), 400000U) << "the lines are not there";
}

}  // namespace
}  // namespace workbench
