/// Any bytes are a configuration file: every operation ends with one of its codes.
#include "config/cnfg.h"
#include "fuzz/memory_file.h"

#include <cstdlib>

namespace {

void check(bool isRight) {
  if (!isRight) std::abort();
}

void readAll(Cnfg& cnfg) {
  std::string key;
  std::string value;
  for (const char* const section : {"PROGRAM", "MenuBar", ""}) {
    if (cnfg.findSection(section) != Cnfg::kOk) continue;
    std::size_t count = 0;
    while (cnfg.readNextParameter(key, value) == Cnfg::kOk) {
      ++count;
      check(!key.empty() && value.find('#') == std::string::npos);
    }
    check(cnfg.readParameterByIndex(key, value, section, count) == Cnfg::kParameterNotFound);
    check(count == 0 || cnfg.readParameterByIndex(key, value, section, count - 1) == Cnfg::kOk);
    const std::int32_t code = cnfg.readParameter("name", value, section);
    check(code == Cnfg::kOk || code == Cnfg::kParameterNotFound);
  }
}

void edit(Cnfg& cnfg) {
  cnfg.loadForEditing();
  if (cnfg.setParameter("name", "new value") != Cnfg::kOk) return;
  check(cnfg.save() == Cnfg::kOk);
  check(cnfg.getErrorText() == "OK");
  cnfg.loadForEditing();
  check(cnfg.setParameter("name", "new value") == Cnfg::kOk);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dataP, std::size_t size) {
  static MemoryFile file;
  file.fill(dataP, size);
  Cnfg cnfg;
  check(cnfg.open(file.path()) == Cnfg::kOk);
  readAll(cnfg);
  edit(cnfg);
  readAll(cnfg);
  return 0;
}
