/// What becomes of results when a run does not end well, and of files that the user keeps among them.
#include "tests/workbench/fake_module_process.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kReplay = "replay --drawing a.dxf --session a.session --module '" LM_FAKE_MODULE "' ";
constexpr const char* kGoodSession = "20 motion 9 0 0 0 0 0\n300 end\n";

/// Everything in the folder by name, but for `partial`.
std::map<std::string, std::string> filesOf(const FakeModuleProcess& process) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(process / "out")) {
    const std::string name = fs::relative(entry.path(), process.root()).string();
    if (entry.is_regular_file() && name.rfind("out/partial", 0) != 0) files[name] = process.bytes(name);
  }
  return files;
}

std::string endedBy(const FakeModuleProcess& process) {
  return nlohmann::json::parse(process.read("out/partial/summary.json")).at("ended_by");
}

/// Runs a shell command in the test's folder.
int shell(const FakeModuleProcess& process, const std::string& command) {
  return std::system(("cd '" + process.root().string() + "' && " + command).c_str());
}

TEST(ResultsOfARun, FolderIsMadeWithItsParents) {
  const FakeModuleProcess process;
  process.write("a.session", kGoodSession);
  EXPECT_EQ(process.run(std::string(kReplay) + "--out deep/er/out").status, 0);
  EXPECT_TRUE(process.has("deep/er/out/index.html"));
  EXPECT_FALSE(process.has("deep/er/out/partial"));
}

TEST(ResultsOfARun, RefusedInputMakesNoFolder) {
  const FakeModuleProcess process;
  process.write("a.session", "9 jump\n");
  EXPECT_EQ(process.run(std::string(kReplay) + "--out deep/er/out").status, 2);
  EXPECT_FALSE(process.has("deep"));
}

TEST(ResultsOfARun, FailedRunLeavesTheEarlierOnesWhole) {
  const FakeModuleProcess process;
  ASSERT_EQ(process.replay(kGoodSession).status, 0);
  const auto before = filesOf(process);
  const Outcome outcome = process.replay("20 motion 9 0 0 0 0 0\n500 setvar NOSUCH 1\n900 end\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(filesOf(process), before);
  EXPECT_EQ(endedBy(process),
            "a.session:2: expected one of the system variables TILEMODE, CVPORT and PERSPECTIVE and a value "
            "it can have, found \"NOSUCH 1\"");
  EXPECT_NE(process.read("out/partial/trajectory.csv").find("pass3d"), std::string::npos);
  EXPECT_EQ(process.replay(kGoodSession).status, 0);
  EXPECT_FALSE(process.has("out/partial"));
}

class EndedRun : public testing::TestWithParam<const char*> {};

TEST_P(EndedRun, EndedRunLeavesTheEarlierResultsWhole) {
  const FakeModuleProcess process;
  ASSERT_EQ(process.replay(kGoodSession).status, 0);
  const auto before = filesOf(process);
  process.write("a.session", "20 motion 9 0 0 0 0 0\n600000 end\n");
  const std::string signal = GetParam();
  // The shell would have a program in the background ignore SIGINT. The menu file is written when the run
  // begins.
  process.write("a.mnu", "");
  const int status =
      shell(process,
            "{ env --default-signal=INT '" LM_WORKBENCH "' " + std::string(kReplay) +
                "--menu a.mnu --realtime --out out >stdout.txt 2>stderr.txt & p=$!; "
                "until [ -e out/partial/profile/Lumetrapad/Applications/autocad.mnu ]; do sleep 0.02; done; "
                "kill -" +
                signal + " $p; wait $p; }");
  EXPECT_EQ(WEXITSTATUS(status), 1) << process.read("stderr.txt");
  EXPECT_EQ(filesOf(process), before);
  EXPECT_EQ(endedBy(process).rfind("the run was ended by SIG" + signal + " at ", 0), 0u) << endedBy(process);
  EXPECT_EQ(process.read("stderr.txt"), "workbench: " + endedBy(process) + "\n");
}

INSTANTIATE_TEST_SUITE_P(BySignal, EndedRun, testing::Values("INT", "TERM", "HUP"));

TEST(ResultsOfARun, FullDiskLeavesTheEarlierOnesWhole) {
  const FakeModuleProcess process;
  ASSERT_EQ(process.replay(kGoodSession).status, 0);
  const auto before = filesOf(process);
  // No file may be longer than 8 kB: the page is, the summary is not.
  const int status = shell(process, "trap '' XFSZ; ulimit -f 16; '" LM_WORKBENCH "' " + std::string(kReplay) +
                                        "--out out >stdout.txt 2>stderr.txt");
  EXPECT_EQ(WEXITSTATUS(status), 2);
  EXPECT_EQ(process.read("stderr.txt"), "workbench: " + (process / "out/partial/index.html").string() +
                                            ": expected a file that can be written, found File too large\n");
  EXPECT_EQ(filesOf(process), before);
  EXPECT_EQ(endedBy(process), (process / "out/partial/index.html").string() +
                                  ": expected a file that can be written, found File too large");
}

TEST(ResultsOfARun, FullStandardOutputIsAnError) {
  const FakeModuleProcess process;
  process.write("a.session", kGoodSession);
  const int status =
      shell(process, "'" LM_WORKBENCH "' " + std::string(kReplay) + "--out out >/dev/full 2>stderr.txt");
  EXPECT_EQ(WEXITSTATUS(status), 2);
  EXPECT_EQ(
      process.read("stderr.txt"),
      "workbench: standard output: expected an output that can be written, found No space left on device\n");
}

TEST(ResultsOfARun, HelpToAFullStandardOutputIsAnError) {
  const FakeModuleProcess process;
  EXPECT_EQ(WEXITSTATUS(shell(process, "'" LM_WORKBENCH "' replay --help >/dev/full 2>stderr.txt")), 2);
}

TEST(ResultsOfARun, SecondRunIntoTheFolderIsRefused) {
  const FakeModuleProcess process;
  ASSERT_EQ(process.replay(kGoodSession).status, 0);
  const int status = shell(
      process, "flock out '" LM_WORKBENCH "' " + std::string(kReplay) + "--out out >stdout.txt 2>stderr.txt");
  EXPECT_EQ(WEXITSTATUS(status), 2);
  EXPECT_EQ(process.read("stderr.txt"),
            "workbench: out: expected a folder for the results, found one that another run is writing "
            "into; wait for its end, or name another folder\n");
}

class MenuAmongTheResults : public testing::TestWithParam<const char*> {};

TEST_P(MenuAmongTheResults, MenuAmongTheResultsIsReadAndKept) {
  const FakeModuleProcess process;
  const fs::path menu = GetParam();
  fs::create_directories((process / menu).parent_path());
  process.write(menu, "\xEF\xBB\xBF[Modes]\r\n");
  const Outcome outcome = process.replay(kGoodSession, "--menu " + menu.string());
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(process.bytes("out/profile/Lumetrapad/Applications/autocad.mnu"), "\xEF\xBB\xBF[Modes]\r\n");
  EXPECT_EQ(process.bytes(menu), "\xEF\xBB\xBF[Modes]\r\n");
}

INSTANTIATE_TEST_SUITE_P(At, MenuAmongTheResults,
                         testing::Values("out/profile/Lumetrapad/Applications/autocad.mnu",
                                         "out/profile/Lumetrapad/my.mnu", "out/my.mnu"));

TEST(ResultsOfARun, KeptProfileKeepsWhatTheUserEdited) {
  const FakeModuleProcess process;
  fs::create_directories(process / "mine/Lumetrapad/Applications");
  process.write("mine/Lumetrapad/Applications/autocad_addin.ini", "edited");
  process.write("mine/Lumetrapad/Applications/autocad.mnu", "[Modes]\n");
  const Outcome outcome =
      process.replay(kGoodSession, "--profile mine --menu mine/Lumetrapad/Applications/autocad.mnu");
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(process.read("mine/Lumetrapad/Applications/autocad_addin.ini"), "edited");
  EXPECT_EQ(process.read("mine/Lumetrapad/Applications/autocad.mnu"), "[Modes]\n");
}

TEST(ResultsOfARun, ReadOnlyProfileIsReported) {
  const FakeModuleProcess process;
  fs::create_directories(process / "mine/Lumetrapad/Applications");
  // A folder stands in for a file system that cannot be written: root may write to a read-only folder.
  fs::create_directories(process / "mine/Lumetrapad/.trial");
  const Outcome outcome = process.replay(kGoodSession, "--profile mine");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "workbench: " + (process / "mine/Lumetrapad/.trial").string() +
                             ": expected a file that can be written, found Is a directory\n");
}

}  // namespace
}  // namespace workbench
