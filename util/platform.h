/// What differs between the native build and Windows in `Util`; a build compiles one of the two sources.
/// Paths are in Windows syntax.
#ifndef UTIL_PLATFORM_H
#define UTIL_PLATFORM_H

#include <ctime>
#include <string>
#include <string_view>

namespace platform {

/// The environment's USERPROFILE in narrow characters; empty when there is none.
std::string userProfile();

/// Whether opening the file for reading is denied (EACCES).
bool isOpenDenied(std::string_view path);

bool isFolder(std::string_view path);

/// Creates one folder; false with errno set when that fails.
bool makeFolder(std::string_view path);

/// Local calendar time of now: year, month, day and day of the week.
std::tm localTime();

}  // namespace platform

#endif
