#include "tests/support/refusing_file.h"
#include "tests/support/system.h"

#include <windows.h>

#include <cstdlib>
#include <stdexcept>

namespace tests {
namespace {

/// The loader knows a library by its full path, in backslashes.
std::filesystem::path fullPath(const std::string& file) {
  return std::filesystem::absolute(file).make_preferred();
}

}  // namespace

std::filesystem::path makeTempFolder() {
  static int count = 0;
  const std::filesystem::path folder =
      std::filesystem::temp_directory_path() /
      ("lm_test_" + std::to_string(GetCurrentProcessId()) + "_" + std::to_string(count++));
  // A process before this one may have had its number.
  std::filesystem::remove_all(folder);
  if (!std::filesystem::create_directory(folder))
    throw std::runtime_error("no temporary folder: " + folder.string());
  return folder;
}

void setEnvironment(const char* name, const std::string& value) {
  _putenv_s(name, value.c_str());
}

void clearEnvironment(const char* name) {
  _putenv_s(name, "");
}

void* openLibrary(const std::string& file) {
  void* const libraryP = LoadLibraryW(fullPath(file).c_str());
  if (libraryP == nullptr) throw std::runtime_error(file + ": error " + std::to_string(GetLastError()));
  return libraryP;
}

void* symbolOf(void* libraryP, const char* name) {
  return reinterpret_cast<void*>(GetProcAddress(static_cast<HMODULE>(libraryP), name));
}

void closeLibrary(void* libraryP) {
  FreeLibrary(static_cast<HMODULE>(libraryP));
}

bool isMapped(const std::string& file) {
  return GetModuleHandleW(fullPath(file).c_str()) != nullptr;
}

}  // namespace tests

RefusingFile::RefusingFile() {
  constexpr DWORD kBufferSize = 65536;
  const HANDLE pipe = CreateNamedPipeA(path().c_str(), PIPE_ACCESS_DUPLEX, PIPE_TYPE_BYTE, 1, kBufferSize,
                                       kBufferSize, 0, nullptr);
  if (pipe == INVALID_HANDLE_VALUE)
    throw std::runtime_error("no pipe: error " + std::to_string(GetLastError()));
  mPipe = reinterpret_cast<std::intptr_t>(pipe);
}

RefusingFile::~RefusingFile() {
  refuse();
}

std::string RefusingFile::path() const {
  return "\\\\.\\pipe\\lm_test_" + std::to_string(GetCurrentProcessId());
}

void RefusingFile::refuse() {
  if (mPipe != -1) CloseHandle(reinterpret_cast<HANDLE>(mPipe));
  mPipe = -1;
}
