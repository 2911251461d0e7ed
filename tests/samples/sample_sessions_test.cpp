/// The sample sessions with the real module, on the sample drawing and on drawings that other programs made.
/// The latter lie beside the project, so a machine without them skips those tests.
#include <gtest/gtest.h>
#include <sys/wait.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;

using Counts = std::map<std::string, std::size_t>;

struct Session {
  const char* name;
  Counts drawn;  ///< what the session itself adds to the drawing
};

const Session kSessions[] = {
    {"navigate", {}}, {"sheet_and_objects", {}}, {"keys", {{"LINE", 2}, {"CIRCLE", 1}}}, {"scrolling", {}}};

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

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "samples_test_XXXXXX").string();
    if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
    mFolder = name;
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(mFolder, ignored);
  }
  const fs::path& path() const { return mFolder; }

 private:
  fs::path mFolder;
};

std::string read(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

/// Exit status of a run of the session into `out`, made if need be.
int play(const fs::path& drawing, const std::string& session, const fs::path& out) {
  fs::create_directory(out);
  const fs::path samples = LM_SAMPLES;
  const std::string command = "'" LM_WORKBENCH "' replay --quiet --drawing '" + drawing.string() +
                              "' --session '" + (samples / (session + ".session")).string() + "' --menu '" +
                              (samples / "autocad.mnu").string() + "' --out '" + out.string() + "' >'" +
                              (out / "stdout.txt").string() + "' 2>&1";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

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
  const TemporaryFolder folder;
  const fs::path first = folder.path() / "first", second = folder.path() / "second";
  ASSERT_EQ(play(drawing, played.session.name, first), 0) << read(first / "stdout.txt");
  ASSERT_EQ(play(drawing, played.session.name, second), 0) << read(second / "stdout.txt");
  const auto summary = nlohmann::json::parse(read(first / "summary.json"));
  EXPECT_TRUE(summary.at("clean").get<bool>());
  for (const char* const left : {"open_objects", "selection_sets_not_freed", "lock_depth_at_end",
                                 "calls_off_main_thread", "reactors_left", "commands_left"})
    EXPECT_EQ(summary.at(left).get<int>(), 0) << left;
  const auto entities = summary.at("entities").get<Counts>();
  Counts expected = played.drawing.entities;
  for (const auto& [type, count] : played.session.drawn) expected[type] += count;
  EXPECT_EQ(entities, expected);
  for (const char* const name : {"trajectory.csv", "commandline.log", "entities.csv"})
    EXPECT_EQ(read(first / name), read(second / name)) << name;
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
