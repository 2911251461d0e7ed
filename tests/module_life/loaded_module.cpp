#include "tests/module_life/loaded_module.h"

#include "tests/support/system.h"

#include <stdexcept>

LoadedModule::LoadedModule(const std::string& file) : mHandleP(tests::openLibrary(file)) {
  mEntryPoint = reinterpret_cast<int (*)(int, void*)>(tests::symbolOf(mHandleP, "acrxEntryPoint"));
  mApiVersion =
      reinterpret_cast<std::uint32_t (*)(std::uint32_t)>(tests::symbolOf(mHandleP, "acrxGetApiVersion"));
  if (mEntryPoint == nullptr || mApiVersion == nullptr)
    throw std::runtime_error(file + ": an export is missing");
}

LoadedModule::~LoadedModule() {
  tests::closeLibrary(mHandleP);
}

bool LoadedModule::isMapped(const std::string& file) {
  return tests::isMapped(file);
}
