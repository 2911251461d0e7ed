#include "workbench/platform/beeps.h"
#include "workbench/platform/import_table.h"
#include "workbench/platform/module_check.h"
#include "workbench/platform/module_loader.h"
#include "workbench/text_input.h"

#include <windows.h>

#include <array>
#include <utility>

namespace workbench {
namespace {

HMODULE asModule(void* library) {
  return static_cast<HMODULE>(library);
}

template <typename Function>
Function symbol(HMODULE library, const char* name, const std::string& file) {
  // By way of void*, since compilers warn about a direct cast between function types.
  void* const address = reinterpret_cast<void*>(GetProcAddress(library, name));
  return reinterpret_cast<Function>(requireExport(address, name, file));
}

/// Windows does not say which library it missed: the first of those that the file asks for and that cannot be
/// loaded; empty when there is none.
std::string missingImport(const std::wstring& file) {
  // Mapped without its imports and without running its code, just to read the table.
  const HMODULE image = LoadLibraryExW(file.c_str(), nullptr, DONT_RESOLVE_DLL_REFERENCES);
  if (image == nullptr) return {};
  std::string missing;
  for (const std::string& name : importedLibraries(image)) {
    const HMODULE import = LoadLibraryW(toWide(name).c_str());
    if (import == nullptr && GetLastError() == ERROR_MOD_NOT_FOUND && missing.empty()) missing = name;
    if (import != nullptr) FreeLibrary(import);
  }
  FreeLibrary(image);
  return missing;
}

std::string reasonOf(DWORD code, const std::wstring& file) {
  if (code == ERROR_MOD_NOT_FOUND)
    if (const std::string missing = missingImport(file); !missing.empty())
      return "one that needs " + missing + ", which is missing";
  // Also the code for a 32-bit library.
  if (code == ERROR_BAD_EXE_FORMAT) return "a file that is no 64-bit library";
  return "one that cannot be loaded (error " + std::to_string(code) + ")";
}

/// Keeps the system from showing a message box about a library that cannot be loaded.
struct ErrorMode {
  ErrorMode() : before(SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX)) {}
  ~ErrorMode() { SetErrorMode(before); }
  ErrorMode(const ErrorMode&) = delete;
  ErrorMode& operator=(const ErrorMode&) = delete;
  UINT before;
};

struct Freer {
  HMODULE library;
  ~Freer() {
    if (library != nullptr) FreeLibrary(library);
  }
};

}  // namespace

Module::Module(const std::filesystem::path& file, const std::filesystem::path&)
    : mFile(std::filesystem::absolute(file).make_preferred()) {
  mName = mFile.string();
  load();
}

void Module::load() {
  assert(mHandle == nullptr && "the module is loaded already");
  if (!std::filesystem::is_regular_file(mFile)) throw notAModule(mName, "no such file");
  // A box about a missing library would wait for somebody to press its button.
  const ErrorMode quiet;
  Freer guard{LoadLibraryW(mFile.c_str())};
  // Read at once: any later call may change it.
  const DWORD code = GetLastError();
  if (guard.library == nullptr) throw notAModule(mName, reasonOf(code, mFile.wstring()));
  requireApiVersion(symbol<ApiVersionFunction>(guard.library, "acrxGetApiVersion", mName)(0), mName);
  mEntryPoint = symbol<EntryPoint>(guard.library, "acrxEntryPoint", mName);
  // Before the module runs, so that no beep is missed.
  interceptBeeps(guard.library);
  mHandle = std::exchange(guard.library, nullptr);
}

Module::~Module() {
  if (mHandle != nullptr) FreeLibrary(asModule(mHandle));
}

bool Module::unload() {
  FreeLibrary(asModule(std::exchange(mHandle, nullptr)));
  // GetModuleHandle does not count as a reference, so there is nothing to free.
  return GetModuleHandleW(mFile.c_str()) == nullptr;
}

std::filesystem::path executableFolder() {
  // The longest path that Windows knows. MAX_PATH would cut it off in a deep folder.
  std::array<wchar_t, 32768> path{};
  GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
  return std::filesystem::path(path.data()).parent_path();
}

}  // namespace workbench
