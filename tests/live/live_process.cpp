#include "tests/live/live_process.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <regex>
#include <stdexcept>
#include <thread>

namespace {

constexpr std::chrono::seconds kStartPatience(60);

}  // namespace

LiveProcess::LiveProcess(const std::vector<std::string>& arguments) {
  std::vector<std::string> all{LM_WORKBENCH, "live", "--no-browser", "--out", (root() / "out").string()};
  all.insert(all.end(), arguments.begin(), arguments.end());
  std::vector<char*> argv;
  for (std::string& argument : all) argv.push_back(argument.data());
  argv.push_back(nullptr);
  const std::string out = (root() / "stdout.txt").string(), err = (root() / "stderr.txt").string();
  mProcess = fork();
  if (mProcess == 0) {
    dup2(open(out.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDOUT_FILENO);
    dup2(open(err.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600), STDERR_FILENO);
    execv(argv.front(), argv.data());
    _exit(127);
  }
  const auto until = std::chrono::steady_clock::now() + kStartPatience;
  std::smatch found;
  const std::regex address("http://127\\.0\\.0\\.1:([0-9]+)/([0-9a-f]+)/\n");
  std::string text;
  while (!std::regex_search(text = read("stdout.txt"), found, address)) {
    int status = 0;
    const bool isOver = waitpid(mProcess, &status, WNOHANG) == mProcess;
    if (isOver) mProcess = 0;
    if (isOver || std::chrono::steady_clock::now() > until)
      throw std::runtime_error("no address: " + read("stdout.txt") + read("stderr.txt"));
    // The program makes the file known by nothing else.
    std::this_thread::yield();
  }
  mPort = static_cast<std::uint16_t>(std::stoi(found[1]));
  mToken = found[2];
}

LiveProcess::~LiveProcess() {
  if (mProcess == 0) return;
  kill(mProcess, SIGKILL);
  waitpid(mProcess, nullptr, 0);
}

std::unique_ptr<PageClient> LiveProcess::connect() const {
  return std::make_unique<PageClient>(mPort, PageIdentity{"/" + mToken + "/ws", {}, {}});
}

LiveProcess::Ending LiveProcess::interrupt() {
  kill(mProcess, SIGINT);
  int status = 0;
  waitpid(mProcess, &status, 0);
  mProcess = 0;
  const std::string out = read("stdout.txt");
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, out.substr(out.find('\n') + 1), read("stderr.txt")};
}
