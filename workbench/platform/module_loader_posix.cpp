#include "workbench/platform/module_check.h"
#include "workbench/platform/module_loader.h"

#include <dlfcn.h>

#include <utility>

namespace workbench {
namespace {

template <typename Function>
Function symbol(void* library, const char* name, const std::string& file) {
  return reinterpret_cast<Function>(requireExport(dlsym(library, name), name, file));
}

/// Frees the library when the constructor of Module throws after loading it.
struct Closer {
  void* library;
  ~Closer() {
    if (library != nullptr) dlclose(library);
  }
};

}  // namespace

Module::Module(const std::filesystem::path& file, const std::filesystem::path& loaded)
    : mName(file.string()),
      mFile(std::filesystem::absolute(loaded)),
      // Without a slash the system would search for it.
      mPath(loaded.has_parent_path() ? loaded.string() : mFile.string()) {
  load();
}

void Module::load() {
  assert(mHandle == nullptr && "the module is loaded already");
  if (!std::filesystem::is_regular_file(mFile)) throw notAModule(mName, "no such file");
  // RTLD_NOW finds missing symbols here and not in the middle of a run. RTLD_LOCAL keeps the module from
  // sharing symbols with this program by accident.
  Closer guard{dlopen(mPath.c_str(), RTLD_NOW | RTLD_LOCAL)};
  if (guard.library == nullptr) throw notAModule(mName, inQuotes(dlerror()));
  requireApiVersion(symbol<ApiVersionFunction>(guard.library, "acrxGetApiVersion", mName)(0), mName);
  mEntryPoint = symbol<EntryPoint>(guard.library, "acrxEntryPoint", mName);
  // Nothing throws from here on.
  mHandle = std::exchange(guard.library, nullptr);
}

Module::~Module() {
  if (mHandle != nullptr) dlclose(mHandle);
}

bool Module::unload() {
  dlclose(std::exchange(mHandle, nullptr));
  // RTLD_NOLOAD succeeds only while the library is mapped. A thread-local destructor or a second handle keeps
  // it so.
  void* const again = dlopen(mFile.c_str(), RTLD_NOW | RTLD_NOLOAD);
  if (again == nullptr) return true;
  dlclose(again);
  return false;
}

std::filesystem::path executableFolder() {
  // argv[0] may be a bare name that the shell found in PATH.
  return std::filesystem::read_symlink("/proc/self/exe").parent_path();
}

}  // namespace workbench
