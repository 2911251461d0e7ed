#include "tests/support/refusing_file.h"
#include "tests/support/system.h"

#include <dlfcn.h>
#include <stdlib.h>

#include <fstream>
#include <stdexcept>

namespace tests {

std::filesystem::path makeTempFolder() {
  std::string name = (std::filesystem::temp_directory_path() / "lm_test_XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder: " + name);
  return name;
}

void setEnvironment(const char* name, const std::string& value) {
  setenv(name, value.c_str(), 1);
}

void clearEnvironment(const char* name) {
  unsetenv(name);
}

void* openLibrary(const std::string& file) {
  void* const libraryP = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL);
  if (libraryP == nullptr) throw std::runtime_error(dlerror());
  return libraryP;
}

void* symbolOf(void* libraryP, const char* name) {
  return dlsym(libraryP, name);
}

void closeLibrary(void* libraryP) {
  dlclose(libraryP);
}

bool isMapped(const std::string& file) {
  const std::string name = file.substr(file.rfind('/') + 1);
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find(name) != std::string::npos) return true;
  return false;
}

}  // namespace tests

RefusingFile::RefusingFile() = default;
RefusingFile::~RefusingFile() = default;

std::string RefusingFile::path() const {
  return "\\dev\\full";
}

void RefusingFile::refuse() {}
