#include "util/native_file.h"
#include "util/platform.h"
#include "util/wide_text.h"

#include <direct.h>
#include <fcntl.h>
#include <io.h>
#include <windows.h>

#include <cerrno>

namespace platform {

std::string userProfile() {
  return toAnsi(environmentValue(L"USERPROFILE"));
}

bool isOpenDenied(std::string_view path) {
  const int handle = ::_wopen(systemPath(path).c_str(), _O_RDONLY | _O_NOINHERIT);
  // The runtime maps a sharing violation to EACCES. It also reports EACCES for a folder.
  if (handle < 0) return errno == EACCES;
  ::_close(handle);
  return false;
}

bool isFolder(std::string_view path) {
  // Not _wstat: it fails for a path that ends in a backslash.
  const DWORD attributes = ::GetFileAttributesW(systemPath(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool makeFolder(std::string_view path) {
  return ::_wmkdir(systemPath(path).c_str()) == 0;
}

std::tm localTime() {
  const __time64_t now = ::_time64(nullptr);
  std::tm result = {};
  ::_localtime64_s(&result, &now);
  return result;
}

}  // namespace platform
