#include "workbench/platform/module_check.h"

#include <cstdio>

namespace workbench {

InputError notAModule(const std::string& file, const std::string& found) {
  return {{file}, "a module for host interface 0x130000", found};
}

void* requireExport(void* address, const char* name, const std::string& file) {
  if (address == nullptr) throw notAModule(file, std::string("none of its exports ") + name);
  return address;
}

void requireApiVersion(std::uint32_t version, const std::string& file) {
  if (version == kHostApiVersion) return;
  char text[24];
  std::snprintf(text, sizeof text, "one for 0x%X", static_cast<unsigned>(version));
  throw notAModule(file, text);
}

}  // namespace workbench
