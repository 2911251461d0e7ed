/// Module paths and the numbers of threads and of the process.
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
  // mbrtowc reports an error or an incomplete character by a huge size, which is larger than what is left.
  for (const char* end = path + std::strlen(path); path < end;) {
    wchar_t character = 0;
    const std::size_t used = std::mbrtowc(&character, path, static_cast<std::size_t>(end - path), &state);
    const bool isUnderstood = used != 0 && used <= static_cast<std::size_t>(end - path);
    result.push_back(isUnderstood ? character : static_cast<wchar_t>(static_cast<unsigned char>(*path)));
    path += isUnderstood ? used : 1;
    // After an error the conversion state is unspecified: begin afresh.
    if (!isUnderstood) state = {};
  }
  std::replace(result.begin(), result.end(), L'/', L'\\');
  return result;
}

std::wstring programPath() {
  std::array<char, 4096> path{};
  // readlink stores no terminator: the array is zeroed and one byte is kept free for it.
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  return length > 0 ? widened(path.data()) : std::wstring();
}

std::wstring modulePath(const void* module) {
  {
    const std::lock_guard lock(modulesMutex);
    // A path that a test has set comes first, for the program (null) too.
    const auto found = modulePaths.find(module);
    if (found != modulePaths.end()) return found->second;
  }
  if (module == nullptr) return programPath();
  // A module handle is an address inside the library, so the loader can name the file.
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
  // A path that does not fit is cut and terminated, and the size of the buffer is returned: that is how a
  // caller notices.
  return length < whole.size() ? size : static_cast<DWORD>(length);
}

DWORD GetCurrentThreadId() {
  // The number in order of creation rather than the system's id: logs of two runs must be equal.
  return standin::clock::threadNumber();
}

DWORD GetCurrentProcessId() {
  return static_cast<DWORD>(getpid());
}
