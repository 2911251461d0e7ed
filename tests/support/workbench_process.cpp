#include "tests/support/workbench_process.h"

#include <sys/wait.h>

#include <cstdlib>

namespace {

std::string inQuotes(const std::filesystem::path& path) {
  return "'" + path.string() + "'";
}

}  // namespace

WorkbenchProcess::Outcome WorkbenchProcess::run(const std::string& arguments,
                                                const std::string& environment) const {
  const std::string command = "cd " + inQuotes(root()) + " && " + environment + " '" LM_WORKBENCH "' " +
                              arguments + " >stdout.txt 2>stderr.txt";
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("stdout.txt"), read("stderr.txt")};
}

WorkbenchProcess::Outcome WorkbenchProcess::replay(const Replay& files) const {
  std::filesystem::create_directory(root() / files.out);
  return run("replay --quiet --drawing " + inQuotes(files.drawing) + " --session " + inQuotes(files.session) +
             " --menu " + inQuotes(files.menu) + " --out " + inQuotes(files.out));
}
