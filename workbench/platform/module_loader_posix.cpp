#include "workbench/input_error.h"
#include "workbench/platform/module_loader.h"

#include <dlfcn.h>

#include <cassert>
#include <utility>

namespace workbench {
namespace {

constexpr const char* kExpected = "a module for host interface 0x130000";

std::string hex(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "0x%X", static_cast<unsigned>(value));
  return text;
}

template <typename Function>
// A missing export is the user's mistake, a wrong file, so it is reported like one.
Function symbol(void* library, const char* name, const std::string& file) {
  void* const address = dlsym(library, name);
  if (address == nullptr) throw InputError({file}, kExpected, std::string("none of its exports ") + name);
  return reinterpret_cast<Function>(address);
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
    : mFile(std::filesystem::absolute(loaded)) {
  const std::string name = file.string();
  if (!std::filesystem::is_regular_file(mFile)) throw InputError({name}, kExpected, "no such file");
  // Without a slash the system would search for it.
  const std::string path = loaded.has_parent_path() ? loaded.string() : mFile.string();
  // RTLD_NOW finds missing symbols here and not in the middle of a run. RTLD_LOCAL keeps the module from
  // sharing symbols with this program by accident.
  Closer guard{dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL)};
  if (guard.library == nullptr) throw InputError({name}, kExpected, inQuotes(dlerror()));
  // The version is asked for before the entry point is called: a module for another release might crash
  // there.
  const int version =
      static_cast<int>(symbol<std::uint32_t (*)(std::uint32_t)>(guard.library, "acrxGetApiVersion", name)(0));
  if (version != kHostApiVersion) throw InputError({name}, kExpected, "one for " + hex(version));
  mEntryPoint = symbol<EntryPoint>(guard.library, "acrxEntryPoint", name);
  // Nothing throws from here on.
  mHandle = std::exchange(guard.library, nullptr);
}

Module::~Module() {
  if (mHandle != nullptr) dlclose(mHandle);
}

AcRx::AppRetCode Module::send(AcRx::AppMsgCode message) {
  assert(mEntryPoint != nullptr && mHandle != nullptr && "a message to a module that is not loaded");
  // The packet is the host's own; the module only passes it back to the host.
  return mEntryPoint(message, this);
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
