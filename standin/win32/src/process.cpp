#include "operations.h"
#include "standin_process.h"
#include "standin_ticks.h"
#include "windows.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>
#include <map>
#include <mutex>

namespace standin::windows {
namespace {

const Operation kGetModuleFileName("GetModuleFileNameW", Result::kTellsFailure);

std::mutex modulesMutex;
std::map<const void*, std::wstring> modulePaths;

/// Widens a file name by the locale; a byte that it cannot decode keeps its value. Folders are separated by
/// backslashes, as in the paths that Windows returns.
std::wstring widened(const char* path) {
  std::wstring result;
  std::mbstate_t state{};
  for (const char* end = path + std::strlen(path); path < end;) {
    wchar_t character = 0;
    const std::size_t used = std::mbrtowc(&character, path, static_cast<std::size_t>(end - path), &state);
    const bool isUnderstood = used != 0 && used <= static_cast<std::size_t>(end - path);
    result.push_back(isUnderstood ? character : static_cast<wchar_t>(static_cast<unsigned char>(*path)));
    path += isUnderstood ? used : 1;
    if (!isUnderstood) state = {};
  }
  std::replace(result.begin(), result.end(), L'/', L'\\');
  return result;
}

std::wstring programPath() {
  std::array<char, 4096> path{};
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  return length > 0 ? widened(path.data()) : std::wstring();
}

std::wstring modulePath(const void* module) {
  {
    const std::lock_guard lock(modulesMutex);
    const auto found = modulePaths.find(module);
    if (found != modulePaths.end()) return found->second;
  }
  if (module == nullptr) return programPath();
  Dl_info info{};
  return dladdr(module, &info) != 0 && info.dli_fname != nullptr ? widened(info.dli_fname) : std::wstring();
}

}  // namespace

void setModulePath(const void* module, const std::wstring& path) {
  const std::lock_guard lock(modulesMutex);
  modulePaths.erase(module);
  if (!path.empty()) modulePaths[module] = path;
}

}  // namespace standin::windows

DWORD GetModuleFileNameW(HMODULE module, LPWSTR path, DWORD size) {
  if (standin::windows::kGetModuleFileName.hit()) return 0;
  const std::wstring whole = standin::windows::modulePath(module);
  if (whole.empty() || path == nullptr || size == 0) return 0;
  const std::size_t length = whole.copy(path, size - 1);
  path[length] = L'\0';
  return length < whole.size() ? size : static_cast<DWORD>(length);
}

DWORD GetCurrentThreadId() {
  return standin::clock::threadNumber();
}

DWORD GetCurrentProcessId() {
  return static_cast<DWORD>(getpid());
}
