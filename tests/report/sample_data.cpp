#include "sample_data.h"

#include "workbench/report/page_text.h"
#include "workbench/report/report_scene.h"

#include <nlohmann/json.hpp>

#include <cmath>
#include <cstddef>
#include <cstdio>

namespace report_sample {
namespace {

using workbench::ReportData;
using workbench::ReportLine;
using workbench::ReportMoment;
using workbench::ReportShape;

constexpr double kPi = 3.14159265358979323846;
constexpr std::uint64_t kProbe = 0x2A;

standin::Polyline3 ring(double x, double y, double z, double radius) {
  standin::Polyline3 points;
  for (int i = 0; i <= 64; ++i) {
    const double angle = 2 * kPi * i / 64;
    points.emplace_back(x + radius * std::cos(angle), y + radius * std::sin(angle), z);
  }
  return points;
}

ReportShape shape(std::uint64_t handle, const char* layer, int colour,
                  std::vector<standin::Polyline3> outline) {
  return {handle, layer, colour, std::move(outline), ""};
}

ReportShape probe(double z) {
  ReportShape line = shape(kProbe, "PROBE", 6, {{AcGePoint3d(3, 4, z), AcGePoint3d(3, 4, z + 1)}});
  line.type = "LINE";
  return line;
}

standin::Polyline3 spring() {
  standin::Polyline3 points;
  for (int i = 0; i <= 240; ++i) {
    const double angle = 2 * kPi * i / 40;
    points.emplace_back(1.5 * std::cos(angle), 1.5 * std::sin(angle), 2 + i / 40.0);
  }
  return points;
}

std::vector<ReportShape> flange() {
  std::vector<ReportShape> shapes;
  std::uint64_t handle = 0x100;
  for (const double z : {0.0, 2.0})
    for (const double radius : {2.0, 9.0})
      shapes.push_back(shape(handle++, "OUTLINE", 7, {ring(0, 0, z, radius)}));
  for (int i = 0; i < 6; ++i) {
    const double x = 6.5 * std::cos(kPi * i / 3);
    const double y = 6.5 * std::sin(kPi * i / 3);
    shapes.push_back(shape(handle++, "HOLES", 30, {ring(x, y, 0, 1), ring(x, y, 2, 1)}));
    shapes.push_back(shape(handle++, "CENTRE LINES", 2, {{AcGePoint3d(x, y, -1), AcGePoint3d(x, y, 3)}}));
  }
  shapes.push_back(shape(handle++, "SPRING", 3, {spring()}));
  shapes.push_back(shape(handle++, "CENTRE LINES", 2, {{AcGePoint3d(0, 0, -2), AcGePoint3d(0, 0, 9)}}));
  shapes.push_back(shape(handle++, "POINTS", 1, {{AcGePoint3d(0, 0, 9)}}));
  shapes.push_back(shape(handle++, "ACROSS", 8, {{AcGePoint3d(8, -30, -1), AcGePoint3d(8, 30, -1)}}));
  shapes.push_back(shape(handle++, "BEHIND", 5, {{AcGePoint3d(-2, -30, 3), AcGePoint3d(2, -25, 3)}}));
  shapes.push_back(probe(5));
  return shapes;
}

standin::host::Camera cameraAt(int step) {
  standin::host::Camera camera;
  const double angle = -kPi / 4 + step * kPi / 40;
  camera.position = AcGePoint3d(std::sqrt(200.0) * std::cos(angle), std::sqrt(200.0) * std::sin(angle), 10);
  camera.up = AcGeVector3d(0, 0, 1);
  camera.fieldWidth = 40;
  camera.fieldHeight = 30;
  if (step < 10) return camera;
  camera.position = AcGePoint3d(0.5 * (step - 10), -20, 0.8 * (step - 10));
  camera.fieldWidth = 20;
  camera.fieldHeight = 15;
  camera.isPerspective = true;
  return camera;
}

/// A tree that is scrolled by ten lines at each step, and an edit field beside it; the pointer goes over.
workbench::ReportDesktop desktopAt(int step) {
  workbench::ReportDesktop desktop;
  desktop.windows = {
      {"Frame", {0, 0, 400, 300}, {}, {}},
      {"SysTreeView32", {200, 10, 300, 290}, workbench::ReportScrollBar{0, 399, 40, 10 * step}, {}},
      {"Edit",
       {310, 10, 390, 290},
       workbench::ReportScrollBar{0, 60, 10, 3},
       workbench::ReportScrollBar{0, 300, 80, 110}}};
  desktop.pointer = {step < 10 ? 250 : 350, 150};
  return desktop;
}

ReportMoment momentAt(int step) {
  ReportMoment moment;
  moment.timeMs = 100 * step;
  moment.cap = {step < 10 ? 0 : 40, 0, step < 10 ? 0 : -25, 0, step < 10 ? -350 : 0, 0};
  moment.camera = cameraAt(step);
  if (step >= 5 && step < 15) moment.selection = {kProbe};
  if (step >= 15) moment.changed = {probe(7)};
  moment.isLayout = step >= 18;
  moment.isPaper = step == 19;
  moment.viewport = moment.isPaper ? 1 : 2;
  moment.paper = {200, 140, 500, 400};
  moment.sheet = {210, 148.5, 420, 297};
  moment.window = {210, 148.5, 380, 257};
  moment.desktop = desktopAt(step);
  return moment;
}

workbench::ReportPass passAt(int step) {
  workbench::ReportPass pass{100 * step, 2, step == 19, step >= 18, cameraAt(step), true};
  if (!pass.isPaper) return pass;
  pass.viewport = 1;
  pass.camera = {{200, 140, 0}, {0, 0, 0}, {0, 0, 0}, 500, 400, false};
  return pass;
}

const char* const kLog =
    "------------------------------------------------------------------------------------------\n"
    "Lumetra logfile 'sample.txt' opened at Mon Nov 16 2026\n"
    "------------------------------------------------------------------------------------------\n"
    "    Time    |Typ|  TID |      File      | Line|        Class And Method         | LogText\n"
    "------------+---+------+----------------+-----+---------------------------------+---------\n"
    "07:05:09.042|CRT|     1|   lm_auto_cad.c|   12| LmAutoCad::LmAutoCad            | Constructing ...\n"
    "07:05:09.100|INF|     1|auto_cad_proxy.c|  210| AutoCadProxy::handleDeviceCap   | Cap moving.\n"
    "07:05:10.000|ERR|     1|auto_cad_proxy.c|  310| AutoCadProxy::rotate            | Error rotate()\n"
    "07:05:10.200|TMP|     1|auto_cad_proxy.c|  410| AutoCadProxy::centre            | \n"
    "       0  1  2  3  4  5  6  7  8  9\n"
    "07:05:11.000|TRC|     1|auto_cad_proxy.c|  250| AutoCadProxy::released          | Cap released.\n";

}  // namespace

ReportData bundle() {
  ReportData data;
  data.drawingName = "flange.dxf";
  data.sessionName = "orbit.session";
  data.isClean = false;
  data.summary = {{"Passes", "118"}, {"Views committed", "2"}, {"Objects left open", "1"}};
  data.shapes = flange();
  for (int step = 0; step <= 20; ++step) {
    data.moments.push_back(momentAt(step));
    if (step == 19) data.passes.push_back({1900, 2, false, true, cameraAt(19), true});
    data.passes.push_back(passAt(step));
    // Between two moments the camera is somewhere else.
    if (step == 0) data.passes.push_back({50, 2, false, false, cameraAt(5), false});
  }
  data.commandLine = {{0, "print", "\nModule loaded.\n"},
                      {450, "send", "'_-VIEW _FRONT "},
                      {1000, "send-activate", "\x1b\x1b_ZOOM _ALL\n"},
                      {1500, "host", "Unknown command \"FRONT\"."},
                      {1800, "beep", ""}};
  data.functions = {{"From above", "_-VIEW;_TOP"}, {"", "M=$(getvar,\"tilemode\")"}};
  data.keys = {{450, "key front", {"'_-VIEW _FRONT ", "'_ZOOM _ALL "}, "from the front, 40 x 30"},
               {1000, "key top, function 1", {"\x1b\x1b"}, ""}};
  // A push that falls between two moments, then what the moments have.
  data.caps = {{0, {0, 0, 0, 0, -350, 0}},
               {410, {90, 0, 0, 0, 0, 0}},
               {440, {0, 0, 0, 0, -350, 0}},
               {1000, {40, 0, -25, 0, 0, 0}}};
  data.events = {{0, 1, "motion 0 0 0 0 -350 0"}, {410, 2, "motion 90 0 0 0 0 0"}, {450, 4, "key front"}};
  data.toggles = {{0, true, false}};
  data.modes = {{600, 11, false}, {1050, 4, false}};
  data.problems = {{700, "host: something that must not be"}, {std::nullopt, "1 objects left open"}};
  data.log = kLog;
  return data;
}

ReportData emptyRun() {
  ReportData data;
  data.drawingName = "empty.dxf";
  data.sessionName = "nothing.session";
  data.isClean = true;
  data.moments.resize(1);
  return data;
}

ReportData hostileRun() {
  const std::string markup = "</script><script>document.title='taken'</script><!-- @@STYLE@@ &amp; \"' \\";
  ReportData data = emptyRun();
  data.drawingName = data.sessionName = data.log = markup;
  data.summary = {{markup, markup}};
  data.commandLine = {{0, markup, markup}};
  data.functions = {{markup, markup}};
  data.keys = {{0, markup, {markup}, markup}};
  data.moments[0].desktop =
      workbench::ReportDesktop{{{markup, {0, 0, 9, 9}, workbench::ReportScrollBar{0, 9, 1, 0}, {}}}, {1, 1}};
  data.shapes = {shape(1, markup.c_str(), 1, {{AcGePoint3d(-0.2, 0, 0), AcGePoint3d(0.2, 0, 0)}})};
  return data;
}

ReportData largeRun(int lines, int moments) {
  ReportData data = emptyRun();
  std::vector<std::uint64_t> all;
  for (int i = 0; i < lines; ++i) {
    const double angle = 0.7 * i;
    const double radius = 0.1 * i / std::sqrt(1.0 + i);
    const AcGePoint3d from(radius * std::cos(angle), radius * std::sin(angle), 0.01 * (i % 100));
    all.push_back(static_cast<std::uint64_t>(i) + 1);
    data.shapes.push_back(
        shape(all.back(), "LINES", 1 + i % 7, {{from, AcGePoint3d(from.x + 0.3, from.y, from.z)}}));
  }
  data.moments.clear();
  for (int step = 0; step < moments; ++step) {
    data.moments.push_back(momentAt(step % 10));
    data.moments.back().timeMs = 100 * step;
    data.moments.back().selection = all;
  }
  return data;
}

ReportData longRun() {
  ReportData data = emptyRun();
  data.isLogOnClock = true;
  for (int ms = 0; ms < 50000; ++ms) {
    char line[100];
    std::snprintf(line, sizeof line,
                  "00:00:%02d.%03d|INF|     1|  auto_cad.c|   10| AutoCad::pass | Pass %d of ten.\n",
                  ms / 1000, ms % 1000, ms % 10);
    data.log += line;
  }
  data.moments.resize(2);
  data.moments[1].timeMs = 50000;
  return data;
}

std::string comparedPage() {
  ReportData second = bundle();
  for (workbench::ReportPass& pass : second.passes) pass.camera.fieldWidth *= 0.75;
  nlohmann::ordered_json json = workbench::reportJson(bundle());
  json["other"] = workbench::reportJson(second);
  json["compared"] = nlohmann::ordered_json::parse(R"({"runs": ["first", "second"], "equal": false,
      "first": {"line": 3, "time_ms": [100, 100], "columns": ["field_width"]},
      "columns": [{"column": "field_width", "rows": 21, "largest": 10, "line": 3, "time_ms": [100, 100], "values": [40, 30]}],
      "lines_only": [[{"line": 2, "text": "450 send \"a\""}], []], "lines_moved": null,
      "entities_only": [[], [{"handle": "2B", "type": "LINE", "columns": [], "moved": null}]],
      "entities_changed": [{"handle": "2A", "type": "LINE", "columns": ["points"], "moved": 2}],
      "summary": [{"key": "passes_3d", "values": ["20", "21"]}]})");
  return workbench::reportPage("first and second", workbench::scriptJson(json));
}

}  // namespace report_sample
