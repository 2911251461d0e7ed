/// A run is what its drawing, session and menu make it: the place, the time zone, the language and the load
/// of the machine change no byte of it.
#include "tests/support/workbench_process.h"

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <vector>

namespace {

namespace fs = std::filesystem;

/// Keeps every core of the machine busy as long as it lives.
class Load {
 public:
  Load() {
    const long cores = std::max(sysconf(_SC_NPROCESSORS_ONLN), 1L);
    for (long i = 0; i < cores; ++i) mProcesses.push_back(start());
  }
  ~Load() {
    for (const pid_t process : mProcesses) {
      kill(process, SIGKILL);
      waitpid(process, nullptr, 0);
    }
  }
  Load(const Load&) = delete;
  Load& operator=(const Load&) = delete;

 private:
  static pid_t start() {
    const pid_t process = fork();
    // The system ends it when the test is ended in the middle.
    if (process == 0) {
      alarm(60);
      for (volatile unsigned i = 0;; i = i + 1) continue;
    }
    return process;
  }

  std::vector<pid_t> mProcesses;
};

/// A locale with a decimal comma and with letters that change case in a way of their own, made by the
/// system's tool into the test's folder.
bool makeLocale(const WorkbenchProcess& process) {
  fs::create_directory(process / "locales");
  const std::string command =
      "localedef -i tr_TR -f UTF-8 '" + (process / "locales/tr_TR.UTF-8").string() + "' 2>/dev/null";
  // Warnings give status 1; what counts is whether the locale is there.
  if (std::system(command.c_str()) == -1) return false;
  return fs::exists(process / "locales/tr_TR.UTF-8/LC_NUMERIC");
}

std::string replayInto(const std::string& out) {
  const std::string samples = LM_SAMPLES;
  // The customization file makes the exporter write the menu file, in a process with a runtime of its own.
  return "replay --quiet --drawing '" + samples + "/bracket.dxf' --session '" + samples +
         "/sheet_and_objects.session' --menu '" + samples + "/office.cuix' --out '" + out + "'";
}

/// Whether the file is the same in every run of this build.
bool isComparable(const std::string& name) {
#ifdef __SANITIZE_THREAD__
  // The thread sanitizer holds new threads back, so their first lines in the log have no fixed order.
  return name != "index.html" && name != "profile/Lumetrapad/autocad_addin_log.txt";
#else
  return !name.empty();
#endif
}

/// Every file below the folder, by its path in there.
std::map<std::string, std::string> filesOf(const WorkbenchProcess& process, const fs::path& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : fs::recursive_directory_iterator(process / folder)) {
    const std::string name = fs::relative(entry.path(), process / folder).string();
    if (entry.is_regular_file() && isComparable(name)) files[name] = process.bytes(folder / name);
  }
  return files;
}

TEST(Surroundings, ChangeNoByteOfARun) {
  const WorkbenchProcess process;
  if (!makeLocale(process)) {
    ASSERT_EQ(std::getenv("CI"), nullptr) << "localedef could not make a locale: install locales";
    GTEST_SKIP() << "localedef could not make a locale";
  }
  const auto first = process.run(replayInto("first"), "TZ=UTC LC_ALL=C");
  ASSERT_EQ(first.status, 0) << first.err;
  const Load load;
  const auto second = process.run(replayInto("else where/second"),
                                  "TZ=Asia/Kathmandu LANG=tr_TR.UTF-8 LC_ALL=tr_TR.UTF-8 LOCPATH='" +
                                      (process / "locales").string() + "'");
  ASSERT_EQ(second.status, 0) << second.err;
  const auto before = filesOf(process, "first"), after = filesOf(process, "else where/second");
  EXPECT_EQ(before.count("profile/Lumetrapad/Applications/autocad.mnu"), 1u);
  ASSERT_EQ(before.size(), after.size());
  for (const auto& [name, bytes] : before)
    EXPECT_TRUE(after.count(name) == 1 && after.at(name) == bytes) << name;
}

TEST(Date, OfARunIsGivenOrTheDrawingsOwn) {
  const WorkbenchProcess process;
  process.write("a.session", "9 end\n");
  process.write("without.dxf", "0\nEOF\n");
  process.write("with.dxf", "0\nSECTION\n2\nHEADER\n9\n$TDCREATE\n40\n2451544.9\n0\nENDSEC\n0\nEOF\n");
  const std::pair<const char*, const char*> table[] = {{"without.dxf", "Tue Jan  1 2013"},
                                                       {"with.dxf", "Fri Dec 31 1999"},
                                                       {"with.dxf --date 2026-02-03", "Tue Feb  3 2026"}};
  for (const auto& [drawing, date] : table) {
    const auto outcome =
        process.run("replay --quiet --session a.session --out out --drawing " + std::string(drawing));
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const std::string log = process.read("out/profile/Lumetrapad/autocad_addin_log.txt");
    EXPECT_NE(log.find(std::string(" opened at ") + date + "\n"), std::string::npos) << date << log;
  }
}

}  // namespace
