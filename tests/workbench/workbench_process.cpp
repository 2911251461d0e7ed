#include "tests/workbench/workbench_process.h"

#include "tests/workbench/dxf_text.h"

#include <sys/wait.h>

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace workbench {
namespace {

/// A line, a circle, and a text that is not understood.
constexpr const char* kDrawing =
    "0 LINE|5 2A|8 Walls|10 0|20 0|30 0|11 10|21 0|31 0|0 CIRCLE|5 2B|8 a,\"b\"|10 5|20 0.1|30 0|40 1|0 "
    "TEXT|1 x";

}  // namespace

WorkbenchProcess::WorkbenchProcess() {
  std::string name = (std::filesystem::temp_directory_path() / "workbench_test_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no folder for the test");
  mFolder = name;
  write("a.dxf", dxfEntities(kDrawing));
}

WorkbenchProcess::~WorkbenchProcess() {
  std::error_code ignored;
  std::filesystem::remove_all(mFolder, ignored);
}

void WorkbenchProcess::write(const std::string& name, const std::string& text) const {
  std::ofstream(mFolder / name, std::ios::binary) << text;
}

std::string WorkbenchProcess::read(const std::string& name) const {
  std::ostringstream text;
  text << std::ifstream(mFolder / name, std::ios::binary).rdbuf();
  return text.str();
}

Outcome WorkbenchProcess::run(const std::string& arguments, const std::string& fault) const {
  const std::string command = "cd '" + mFolder.string() +
                              "' && FAKE_MODULE_FILE='" LM_FAKE_MODULE "' FAKE_MODULE='" + fault +
                              "' '" LM_WORKBENCH "' " + arguments + " >stdout.txt 2>stderr.txt";
  const int status = std::system(command.c_str());
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read("stdout.txt"), read("stderr.txt")};
}

Outcome WorkbenchProcess::replay(const std::string& session, const std::string& options,
                                 const std::string& fault) const {
  write("a.session", session);
  std::filesystem::create_directory(mFolder / "out");
  return run("replay --drawing a.dxf --session a.session --out out --module '" LM_FAKE_MODULE "' " + options,
             fault);
}

}  // namespace workbench
