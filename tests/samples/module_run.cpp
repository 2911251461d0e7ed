#include "module_run.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

ModuleRun::ModuleRun() {
  std::string name = (fs::temp_directory_path() / "module_run_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
  mFolder = name;
}

ModuleRun::~ModuleRun() {
  std::error_code ignored;
  fs::remove_all(mFolder, ignored);
}

fs::path ModuleRun::write(const std::string& name, const std::string& text) const {
  std::ofstream(mFolder / name, std::ios::binary) << text;
  return mFolder / name;
}

std::string ModuleRun::read(const fs::path& file) {
  std::ostringstream text;
  text << std::ifstream(file, std::ios::binary).rdbuf();
  return text.str();
}

int ModuleRun::play(const fs::path& drawing, const fs::path& session, const fs::path& menu,
                    const std::string& name) const {
  fs::create_directory(out(name));
  const std::string command = "'" LM_WORKBENCH "' replay --quiet --drawing '" + drawing.string() +
                              "' --session '" + session.string() + "' --menu '" + menu.string() +
                              "' --out '" + out(name).string() + "' >'" +
                              (out(name) / "stdout.txt").string() + "' 2>&1";
  const int status = std::system(command.c_str());
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}
