#include "tests/support/program.h"

#include <stdexcept>

#ifdef _WIN32
#include <process.h>
#else
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#endif

namespace tests {
namespace {

#ifdef _WIN32

std::intptr_t spawn(const char* file, const char* const* arguments) {
  return _spawnv(_P_NOWAIT, file, arguments);
}

int statusOf(std::intptr_t process) {
  int status = -1;
  return _cwait(&status, process, 0) == -1 ? -1 : status;
}

#else

std::intptr_t spawn(const char* file, const char* const* arguments) {
  pid_t process = -1;
  // The interface lacks a const: the texts are only read.
  char* const* const texts = const_cast<char* const*>(arguments);
  return posix_spawn(&process, file, nullptr, nullptr, texts, environ) == 0 ? process : -1;
}

int statusOf(std::intptr_t process) {
  int status = 0;
  const bool hasEnded = waitpid(static_cast<pid_t>(process), &status, 0) == process && WIFEXITED(status);
  return hasEnded ? WEXITSTATUS(status) : -1;
}

#endif

}  // namespace

Program::Program(const std::string& file, const std::vector<std::string>& arguments) {
  std::vector<const char*> texts = {file.c_str()};
  for (const std::string& argument : arguments) texts.push_back(argument.c_str());
  texts.push_back(nullptr);
  mProcess = spawn(file.c_str(), texts.data());
  if (mProcess == -1) throw std::runtime_error("cannot start " + file);
}

Program::~Program() {
  wait();
}

int Program::wait() {
  if (!mHasEnded) mStatus = statusOf(mProcess);
  mHasEnded = true;
  return mStatus;
}

}  // namespace tests
