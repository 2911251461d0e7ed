#include "workbench/live/live_files.h"

#include "workbench/input_error.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <ctime>
#include <system_error>

namespace workbench {
namespace {

namespace fs = std::filesystem;

std::string timeName() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[32];
  std::strftime(text, sizeof text, "live-%Y%m%d-%H%M%S", &local);
  return text;
}

/// As a shell takes it.
std::string quoted(const std::string& text) {
  if (text.find_first_not_of("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789/._-+=,") ==
      std::string::npos)
    return text;
  std::string result = "'";
  for (const char c : text) result += c == '\'' ? std::string("'\\''") : std::string(1, c);
  return result + "'";
}

void makeFolder(const fs::path& folder) {
  std::error_code error;
  fs::create_directories(folder, error);
  if (error) throw InputError({folder.string()}, "a folder that can be made", error.message());
}

}  // namespace

LiveFiles::LiveFiles(const LiveOptions& options)
    : mOptions(options), mOut(fs::absolute(options.out).lexically_normal()), mName(timeName()) {
  // Two that begin in one second, or one after another in tests, must not share their files.
  for (int i = 2; fs::exists(mOut / (mName + ".run")); ++i)
    mName = mName.substr(0, mName.find('+')) + "+" + std::to_string(i);
  mRunFolder = mOut / (mName + ".run");
  makeFolder(mRunFolder);
}

LiveFiles::~LiveFiles() {
  if (mReporter == 0) return;
  kill(mReporter, SIGTERM);
  waitpid(mReporter, nullptr, 0);
}

void LiveFiles::keepSettings(const fs::path& settingsFile) {
  if (fs::is_regular_file(settingsFile)) mSettings = readBytes(settingsFile, "the module's settings");
}

fs::path LiveFiles::save(const std::string& events) {
  const fs::path file = mOut / (mName + ".session"), unfinished = mOut / (mName + ".session.new");
  if (mSettings) {
    // Anew each time: the module writes its settings at the end of a run.
    const fs::path folder = mOut / (mName + ".profile") / "Lumetrapad" / "Applications";
    makeFolder(folder);
    writeFile(folder / "autocad_addin.ini", *mSettings);
  }
  std::string command = "workbench";
  for (const std::string& argument : replayArguments(file)) command += " " + quoted(argument);
  writeFile(unfinished, "# A live session. To play it:\n#   " + command + "\n" + events);
  std::error_code error;
  // Renamed whole: a disk that is full must not cost the session that was saved before.
  fs::rename(unfinished, file, error);
  if (error) throw InputError({file.string()}, "a file that can be replaced", error.message());
  return file;
}

std::vector<std::string> LiveFiles::replayArguments(const fs::path& session) const {
  std::vector<std::string> arguments{"replay",
                                     "--drawing",
                                     mOptions.drawings.front().string(),
                                     "--session",
                                     session.string(),
                                     "--out",
                                     reportFolder().string()};
  if (mOptions.menu) arguments.insert(arguments.end(), {"--menu", mOptions.menu->string()});
  if (mSettings) arguments.insert(arguments.end(), {"--profile", (mOut / (mName + ".profile")).string()});
  return arguments;
}

void LiveFiles::startReport(const std::string& events) {
  if (mReporter != 0) throw InputError({"page"}, "one report at a time", "one that is being made");
  const fs::path session = save(events);
  std::vector<std::string> arguments = replayArguments(session);
  for (const char* const argument : {"--quiet", "--module"}) arguments.emplace_back(argument);
  arguments.push_back(mOptions.module.string());
  std::string program = fs::read_symlink("/proc/self/exe").string();
  std::vector<char*> argv{program.data()};
  for (std::string& argument : arguments) argv.push_back(argument.data());
  argv.push_back(nullptr);
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  // What it prints is no output of this program.
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  const int error = posix_spawn(&mReporter, program.c_str(), &actions, nullptr, argv.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  if (error == 0) return;
  mReporter = 0;
  throw InputError({program}, "a program that can be started", std::generic_category().message(error));
}

std::optional<LiveFiles::Report> LiveFiles::finishedReport() {
  int status = 0;
  if (mReporter == 0 || waitpid(mReporter, &status, WNOHANG) == 0) return std::nullopt;
  mReporter = 0;
  const fs::path page = reportFolder() / "index.html";
  // 1: a rule was broken, which is what the report shows.
  if (WIFEXITED(status) && WEXITSTATUS(status) <= 1 && fs::exists(page)) return Report{true, page.string()};
  return Report{false, "The report could not be made."};
}

}  // namespace workbench
