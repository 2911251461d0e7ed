/// Any bytes are a menu item's value, and any bytes are a menu file: two readers that were written apart find
/// the same macros in it.
#include "common_sources/menu_table.h"
#include "fuzz/memory_file.h"
#include "workbench/report/menu_functions.h"

#include <algorithm>
#include <cstdlib>

namespace {

void check(bool isRight) {
  if (!isRight) std::abort();
}

void checkValue(std::string_view value) {
  const auto macro = menuMacro(value);
  const std::size_t labelEnd = value.find('}');
  check(macro.has_value() == (labelEnd != std::string_view::npos && labelEnd + 1 < value.size()));
  if (!macro) return;
  check(macro->find('|') == std::string_view::npos);
  const std::string_view rest = value.substr(labelEnd + 1);
  check(rest.substr(0, macro->size()) == *macro);
  check(macro->size() == rest.size() || rest[macro->size()] == '|');
}

void checkFile(std::string_view text) {
  static MemoryFile file;
  file.fill(reinterpret_cast<const std::uint8_t*>(text.data()), text.size());
  const auto table = readMenuFile(file.path());
  check(table.has_value());
  const auto functions = workbench::menuFunctions(text);
  check(functions.size() == table->macros.size());
  for (std::size_t i = 0; i < functions.size(); ++i) check(functions[i].macro == table->macros[i]);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* dataP, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(dataP), size);
  checkValue(text);
  // Only one of the readers knows what becomes of a NUL or of a carriage return inside a line.
  if (text.find('\0') == std::string_view::npos && text.find('\r') == std::string_view::npos) checkFile(text);
  return 0;
}
