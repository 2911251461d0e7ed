#include "tests/workbench/fake_module_process.h"

#include <gtest/gtest.h>

namespace workbench {
namespace {

struct BadUsage {
  const char* arguments;
  const char* line;
};

/// Each leaves one line, status 2 and an empty output folder.
TEST(CommandLine, EveryMistakeGivesOneLineAndWritesNothing) {
  const FakeModuleProcess process;
  process.write("a.session", "9 end\n");
  process.write("bad.session", "9 jump\n");
  process.write("back.session", "9 key top\n5 end\n");
  process.write("far.session", "9 motion 0 0 0 0 0 40000\n");
  process.write("late.session", "9 key top\n9 menu\n");
  process.write("picture.dxf", "\x89PNG\r\n\x1A\n");
  process.write("cut.dxf", process.read("a.dxf").substr(0, 60));
  process.write("file", "");
  std::filesystem::create_directory(process.root() / "out");
  const std::string module = " --module '" LM_FAKE_MODULE "'";
  const BadUsage table[] = {
      {"--session a.session --out out",
       "command line: --drawing is required; \"workbench replay --help\" lists the options"},
      {"--drawing a.dxf --session a.session --out out --frames many",
       "--frames: expected a whole number, 1 to 10000, found \"many\""},
      {"--drawing a.dxf --session a.session --out out --frame-ms 0",
       "--frame-ms: expected a whole number, 1 to 10000, found \"0\""},
      {"--drawing a.dxf --session a.session --out out --date 2013-13-01",
       "--date: expected a day, 1970-01-01 to 2999-12-31, found \"2013-13-01\""},
      {"--drawing a.dxf --session a.session --out out --date 2013-02-29",
       "--date: expected a day, 1970-01-01 to 2999-12-31, found \"2013-02-29\""},
      {"--drawing a.dxf --session a.session --out out --date 2013-12-32",
       "--date: expected a day, 1970-01-01 to 2999-12-31, found \"2013-12-32\""},
      {"--drawing a.dxf --session a.session --out out --fast",
       "command line: The following argument was not expected: --fast; \"workbench replay --help\" lists the "
       "options"},
      {"--drawing no.dxf --session a.session --out out",
       "no.dxf: expected a drawing (DXF text file), found no such file"},
      {"--drawing . --session a.session --out out", ".: expected a drawing (DXF text file), found a folder"},
      {"--drawing picture.dxf --session a.session --out out",
       "picture.dxf:1: expected a group code of a DXF text file, found \"\\x89PNG\""},
      {"--drawing a.dxf --session no.session --out out",
       "no.session: expected a session, found no such file"},
      {"--drawing a.dxf --session back.session --out out",
       "back.session:2: expected a time not before 9, found \"5\""},
      {"--drawing a.dxf --session far.session --out out",
       "far.session:1: expected rz (a whole number, -32768 to 32767), found \"40000\""},
      {"--drawing a.dxf --session late.session --out out",
       "late.session:2: expected the option --menu beside the event \"menu\", found none"},
      {"--drawing a.dxf --session a.session --out file",
       "file: expected a folder for the results, found a file"},
      {"--drawing a.dxf --session a.session --out out --profile file",
       "file: expected a folder for the user's profile, found a file"},
      {"--drawing a.dxf --session a.session --out out --menu no.mnu",
       "no.mnu: expected a menu file, found no such file"}};
  for (const auto& [arguments, line] : table) {
    const Outcome outcome = process.run(std::string("replay ") + arguments + module);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_EQ(outcome.err, std::string("workbench: ") + line + "\n");
    EXPECT_TRUE(std::filesystem::is_empty(process.root() / "out")) << arguments;
  }
}

TEST(CommandLine, CutDrawingGivesOneLine) {
  const FakeModuleProcess process;
  const std::string whole = process.read("a.dxf");
  process.write("a.dxf", whole.substr(0, whole.size() / 2));
  const Outcome outcome = process.replay("9 end\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err.rfind("workbench: a.dxf:", 0), 0u) << outcome.err;
  EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1);
}

TEST(CommandLine, UnknownVerbNamesFileAndLine) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("1 key top\n9 jump\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "workbench: a.session:2: expected one of rotmode motion key function event device select command "
            "enter setvar projection pointer document viewport setting reload menu end, found \"jump\"\n");
}

TEST(CommandLine, UnknownVariableEndsTheRun) {
  const FakeModuleProcess process;
  const Outcome outcome = process.replay("9 setvar NOSUCH 1\n5000 key top\n");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err,
            "workbench: a.session:1: expected one of the system variables TILEMODE, CVPORT and PERSPECTIVE "
            "and a value it can have, found \"NOSUCH 1\"\n");
  EXPECT_FALSE(std::filesystem::exists(process.root() / "out/trajectory.csv"));
}

TEST(CommandLine, OtherModulesAreRefused) {
  const FakeModuleProcess process;
  process.write("a.session", "9 end\n");
  std::filesystem::create_directory(process.root() / "out");
  const std::pair<std::string, std::string> table[] = {
      {LM_OLD_MODULE, "one for 0x120000"},
      {LM_NO_MODULE, "none of its exports acrxGetApiVersion"},
      {"/nowhere/a.arx", "no such file"}};
  for (const auto& [module, found] : table) {
    const Outcome outcome =
        process.run("replay --drawing a.dxf --session a.session --out out --module '" + module + "'");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err, "workbench: " + module +
                               ": expected a module for host interface 0x130000, found " + found + "\n");
    EXPECT_TRUE(std::filesystem::is_empty(process.root() / "out"));
  }
}

TEST(CommandLine, HelpPrintsTheOptions) {
  const FakeModuleProcess process;
  const Outcome outcome = process.run("replay --help");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.out.find("--frame-ms"), std::string::npos);
  EXPECT_EQ(outcome.err, "");
}

TEST(CommandLine, VersionIsThatOfTheModule) {
  const FakeModuleProcess process;
  const Outcome outcome = process.run("--version");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "workbench " LM_VERSION "\n");
  EXPECT_EQ(outcome.err, "");
}

TEST(CommandLine, WrongSubcommandIsNamedWithTheRightOnes) {
  const std::pair<const char*, const char*> table[] = {
      {"", "none"}, {"play --out out", "\"play\""}, {"a.dxf", "\"a.dxf\""}};
  const FakeModuleProcess process;
  for (const auto& [arguments, found] : table) {
    const Outcome outcome = process.run(arguments);
    EXPECT_EQ(outcome.status, 2);
    EXPECT_EQ(outcome.err,
              std::string("workbench: command line: expected a subcommand, one of replay compare live, "
                          "found ") +
                  found + "; \"workbench --help\" describes them\n");
  }
}

/// What the program writes while its standard error is a terminal.
std::string onATerminal(const FakeModuleProcess& process, const std::string& arguments) {
  // script(1) runs a command on a terminal of its own and copies what that shows.
  const std::string command = "cd '" + process.root().string() + "' && script -qec \"'" LM_WORKBENCH "' " +
                              arguments + "\" terminal.txt >/dev/null";
  EXPECT_EQ(std::system(command.c_str()), 0);
  return process.bytes("terminal.txt");
}

constexpr const char* kReplay =
    "replay --drawing a.dxf --session a.session --out out --module '" LM_FAKE_MODULE "'";

TEST(CommandLine, TerminalShowsReadingPlayingAndWriting) {
  const FakeModuleProcess process;
  process.write("a.session", "9 end\n");
  const std::string shown = onATerminal(process, kReplay);
  std::size_t at = 0;
  for (const char* const step : {"reading a.session", "reading a.dxf", "playing a.session",
                                 "writing trajectory.csv", "writing index.html"}) {
    at = shown.find(std::string("\rreplay: ") + step + "\033[K", at);
    EXPECT_NE(at, std::string::npos) << step;
  }
  // The line is gone when the summary is printed.
  EXPECT_NE(shown.find("\r\033[Ksession: 9 ms", at), std::string::npos) << shown;
}

TEST(CommandLine, QuietRunShowsNoProgress) {
  const FakeModuleProcess process;
  process.write("a.session", "9 end\n");
  EXPECT_EQ(onATerminal(process, std::string(kReplay) + " --quiet").find("replay:"), std::string::npos);
}

}  // namespace
}  // namespace workbench
