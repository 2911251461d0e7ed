#include "util/native_file.h"
#include "util/platform.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <windows.h>

#include <cerrno>
#include <cstdlib>

namespace platform {

std::string userProfile() {
  const char* const valueP = std::getenv("USERPROFILE");
  return valueP != nullptr ? valueP : "";
}

bool isOpenDenied(std::string_view path) {
  const int handle = ::open(systemPath(path).c_str(), O_RDONLY | O_CLOEXEC);
  // There are no sharing modes here, so only permissions deny it.
  if (handle < 0) return errno == EACCES;
  ::close(handle);
  return false;
}

bool isFolder(std::string_view path) {
  struct stat status = {};
  return ::stat(systemPath(path).c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool makeFolder(std::string_view path) {
  // Narrowed by the umask.
  return ::mkdir(systemPath(path).c_str(), 0777) == 0;
}

/// Through the stand-in's Windows clock: in a replay the date is that of the run.
std::tm localTime() {
  SYSTEMTIME time = {};
  GetLocalTime(&time);
  std::tm result = {};
  result.tm_year = time.wYear - 1900;
  // SYSTEMTIME counts months from 1, tm from 0.
  result.tm_mon = time.wMonth - 1;
  result.tm_mday = time.wDay;
  result.tm_wday = time.wDayOfWeek;
  return result;
}

}  // namespace platform
