/// What tests ask of the system, the same on both platforms: a folder of their own, the environment, and
/// libraries loaded at run time. One thread at a time.
#ifndef TESTS_SUPPORT_SYSTEM_H
#define TESTS_SUPPORT_SYSTEM_H

#include <filesystem>
#include <string>

namespace tests {

/// A new, empty folder. Throws std::runtime_error when there is none to be had.
std::filesystem::path makeTempFolder();

/// The process's environment, as std::getenv of every module sees it.
void setEnvironment(const char* name, const std::string& value);
void clearEnvironment(const char* name);

/// Loads the library. Throws std::runtime_error with the loader's words.
void* openLibrary(const std::string& file);
/// The address of an export, null when there is none.
void* symbolOf(void* libraryP, const char* name);
void closeLibrary(void* libraryP);
/// Whether any part of the file is mapped in this process.
bool isMapped(const std::string& file);

}  // namespace tests

#endif
