#include "tests/workbench/fake_module_process.h"

#include "tests/workbench/dxf_text.h"

namespace workbench {
namespace {

constexpr const char* kDrawing =
    "0 LINE|5 2A|8 Walls|10 0|20 0|30 0|11 10|21 0|31 0|0 CIRCLE|5 2B|8 a,\"b\"|10 5|20 0.1|30 0|40 1|0 "
    "TEXT|1 x";

}  // namespace

FakeModuleProcess::FakeModuleProcess() {
  write("a.dxf", dxfEntities(kDrawing));
}

Outcome FakeModuleProcess::run(const std::string& arguments, const std::string& fault) const {
  return WorkbenchProcess::run(arguments,
                               "FAKE_MODULE_FILE='" LM_FAKE_MODULE "' FAKE_MODULE='" + fault + "'");
}

Outcome FakeModuleProcess::replay(const std::string& session, const std::string& options,
                                  const std::string& fault) const {
  write("a.session", session);
  std::filesystem::create_directory(root() / "out");
  return run("replay --drawing a.dxf --session a.session --out out --module '" LM_FAKE_MODULE "' " + options,
             fault);
}

}  // namespace workbench
