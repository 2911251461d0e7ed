#include "util/windows_util.h"

#include "util/console.h"
#include "util/util.h"

#include <lmcons.h>
#include <tlhelp32.h>

#include <cstdlib>

namespace {

/// Characters of an executable's name that are compared.
constexpr std::size_t kComparedName = 15;

std::string narrow(const wchar_t* textP) {
  std::string result;
  for (; *textP != L'\0'; ++textP) result.push_back(static_cast<char>(*textP));
  return result;
}

std::string quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

/// Closes a handle in its destructor.
class Handle {
 public:
  explicit Handle(HANDLE handle) : mHandle(handle) {}
  ~Handle() {
    if (isValid()) CloseHandle(mHandle);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;

  bool isValid() const { return mHandle != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return mHandle; }

 private:
  const HANDLE mHandle;
};

}  // namespace

int WindowsUtil::copyFolder(std::string_view source, std::string_view destination) {
  // The "\*" makes xcopy copy what is in the folder and not the folder.
  const std::string command = "xcopy /S " + quoted(std::string(source) + "\\*") + " " + quoted(destination);
  return std::system(command.c_str());
}

int WindowsUtil::removeFolder(std::string_view path) {
  // Unlike the folders above the path is not quoted: a caller quotes one that has blanks.
  return std::system(("rmdir /S /Q " + std::string(path)).c_str());
}

bool WindowsUtil::isProcessRunning(std::string_view name) {
  const Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
  PROCESSENTRY32W entry = {};
  // Without the size Windows refuses the record.
  entry.dwSize = sizeof entry;
  // True on failure, because a process that cannot be seen may well be running.
  if (!snapshot.isValid() || !Process32FirstW(snapshot.get(), &entry)) return true;
  do {
    if (entry.th32ProcessID == GetCurrentProcessId()) continue;
    if (narrow(entry.szExeFile).substr(0, kComparedName) == name.substr(0, kComparedName)) return true;
  } while (Process32NextW(snapshot.get(), &entry));
  return false;
}

std::string WindowsUtil::getUserName() {
  wchar_t name[UNLEN + 1] = {};
  DWORD size = UNLEN + 1;
  if (GetUserNameW(name, &size)) return narrow(name);
  printLine("GetUserName() failed! GetLastError: " + std::to_string(GetLastError()));
  return {};
}
