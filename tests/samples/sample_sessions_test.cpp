/// The sample sessions with the real module, on the sample drawing and on drawings that other programs made.
/// The latter are beside the project, so a machine without them skips those tests.
#include "tests/support/workbench_process.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <filesystem>
#include <map>

namespace {

namespace fs = std::filesystem;

using Counts = std::map<std::string, std::size_t>;

struct Session {
  const char* name;
  Counts drawn;  ///< what the session itself adds to the drawing
};

const Session kSessions[] = {{"navigate", {}},
                             {"documents", {}},
                             {"sheet_and_objects", {}},
                             {"keys", {{"LINE", 2}, {"CIRCLE", 1}}},
                             {"scrolling", {}}};

/// A drawing and how many entities of each type it holds.
struct Drawing {
  const char* name;
  Counts entities;
};

const Drawing kOthers[] = {{"pink_egg", {{"3DFACE", 288}}},
                           {"polylines_r12", {{"3DFACE", 1}, {"POLYLINE", 30}}},
                           {"sample_2013",
                            {{"3DFACE", 1},
                             {"ARC", 1},
                             {"CIRCLE", 8},
                             {"ELLIPSE", 1},
                             {"INSERT", 6},
                             {"LINE", 26},
                             {"LWPOLYLINE", 21},
                             {"POINT", 6},
                             {"POLYLINE", 2}}},
                           {"us_main", {{"LINE", 10052}}}};

struct Played {
  Session session;
  Drawing drawing;
};

void PrintTo(const Played& played, std::ostream* stream) {
  *stream << played.session.name << " on " << played.drawing.name;
}

std::string nameOf(const testing::TestParamInfo<Played>& tested) {
  return std::string(tested.param.session.name) + "_on_" + tested.param.drawing.name;
}

std::vector<Played> everySessionOn(const Drawing* first, const Drawing* last) {
  std::vector<Played> all;
  for (const Session& session : kSessions)
    for (const Drawing* drawing = first; drawing != last; ++drawing) all.push_back({session, *drawing});
  return all;
}

void expectCleanAndTheSameTwice(const Played& played, const fs::path& drawing) {
  const WorkbenchProcess process;
  const fs::path samples = LM_SAMPLES;
  const fs::path session = samples / (std::string(played.session.name) + ".session");
  for (const char* const name : {"first", "second"}) {
    const auto outcome = process.replay({drawing, session, samples / "autocad.mnu", name});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
  }
  const fs::path first = "first", second = "second";
  const auto summary = nlohmann::json::parse(process.read(first / "summary.json"));
  EXPECT_TRUE(summary.at("clean").get<bool>());
  for (const char* const left : {"open_objects", "selection_sets_not_freed", "lock_depth_at_end",
                                 "calls_off_main_thread", "reactors_left", "commands_left"})
    EXPECT_EQ(summary.at(left).get<int>(), 0) << left;
  const auto entities = summary.at("entities").get<Counts>();
  Counts expected = played.drawing.entities;
  for (const auto& [type, count] : played.session.drawn) expected[type] += count;
  EXPECT_EQ(entities, expected);
  std::vector<const char*> same = {"trajectory.csv", "commandline.log", "entities.csv", "summary.json",
                                   "profile/Lumetrapad/Applications/autocad_addin.ini"};
#ifndef __SANITIZE_THREAD__
  // The thread sanitizer holds new threads back, so their first lines in the log have no fixed order.
  same.insert(same.end(), {"profile/Lumetrapad/autocad_addin_log.txt", "index.html"});
#endif
  for (const char* const name : same)
    EXPECT_EQ(process.bytes(first / name), process.bytes(second / name)) << name;
}

TEST(ScrollingReport, ShowsTheStepsWithinOneTick) {
  // From 100 ms on for up to 500 ms the module scrolls in one tick, every 120 ms, and nothing is drawn.
  const WorkbenchProcess process;
  const auto session = process.write("a.session", "0 pointer tree\n50 motion 0 0 60 0 0 0\n590 end\n");
  const fs::path samples = LM_SAMPLES;
  ASSERT_EQ(process.replay({samples / "bracket.dxf", session, samples / "autocad.mnu", "out"}).status, 0);
  const std::string page = process.read("out/index.html");
  for (const char* const position : {"[0,2000,40,0]", "[0,2000,40,10]", "[0,2000,40,20]", "[0,2000,40,30]"})
    EXPECT_NE(
        page.find(std::string("\"SysTreeView32\",\"rect\":[1210,60,1390,260],\"vertical\":") + position),
        std::string::npos)
        << position;
}

class SampleSession : public testing::TestWithParam<Played> {};

TEST_P(SampleSession, RunsCleanAndTwiceTheSame) {
  expectCleanAndTheSameTwice(GetParam(), fs::path(LM_SAMPLES) / "bracket.dxf");
}

const Drawing kBracket = {"bracket",
                          {{"3DFACE", 10},
                           {"ARC", 4},
                           {"CIRCLE", 30},
                           {"ELLIPSE", 4},
                           {"INSERT", 4},
                           {"LINE", 52},
                           {"LWPOLYLINE", 8},
                           {"POINT", 2},
                           {"POLYLINE", 1}}};
INSTANTIATE_TEST_SUITE_P(Bracket, SampleSession, testing::ValuesIn(everySessionOn(&kBracket, &kBracket + 1)),
                         nameOf);

class SampleSessionElsewhere : public testing::TestWithParam<Played> {};

TEST_P(SampleSessionElsewhere, RunsCleanAndTwiceTheSame) {
  const fs::path drawing = fs::path(LM_SHARED_DRAWINGS) / (std::string(GetParam().drawing.name) + ".dxf");
  if (!fs::exists(drawing)) GTEST_SKIP() << "no drawing " << drawing;
  expectCleanAndTheSameTwice(GetParam(), drawing);
}

INSTANTIATE_TEST_SUITE_P(Drawings, SampleSessionElsewhere,
                         testing::ValuesIn(everySessionOn(std::begin(kOthers), std::end(kOthers))), nameOf);

}  // namespace
