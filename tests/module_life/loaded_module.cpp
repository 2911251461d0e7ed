#include "tests/module_life/loaded_module.h"

#include <dlfcn.h>

#include <fstream>
#include <stdexcept>

LoadedModule::LoadedModule(const std::string& file) : mHandleP(dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL)) {
  if (mHandleP == nullptr) throw std::runtime_error(dlerror());
  mEntryPoint = reinterpret_cast<int (*)(int, void*)>(dlsym(mHandleP, "acrxEntryPoint"));
  mApiVersion = reinterpret_cast<int (*)()>(dlsym(mHandleP, "acrxGetApiVersion"));
  if (mEntryPoint == nullptr || mApiVersion == nullptr)
    throw std::runtime_error(file + ": an export is missing");
}

LoadedModule::~LoadedModule() {
  dlclose(mHandleP);
}

bool LoadedModule::isMapped(const std::string& file) {
  const std::string name = file.substr(file.rfind('/') + 1);
  std::ifstream maps("/proc/self/maps");
  for (std::string line; std::getline(maps, line);)
    if (line.find(name) != std::string::npos) return true;
  return false;
}
