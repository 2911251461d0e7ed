/// What the process reports of itself: the paths of its modules, its ANSI code page. Any thread.
#ifndef STANDIN_PROCESS_H
#define STANDIN_PROCESS_H

#include "standin_win32_api.h"
#include "windows.h"

#include <string>

namespace standin::windows {

/// GetModuleFileNameW returns `path` for this module handle from now on; an empty path ends that. Without a
/// path of its own a handle is an address inside the module, and null is the program itself.
STANDIN_WIN32_API void setModulePath(const void* module, const std::wstring& path);

/// The ANSI code page from now on: 1252, western European, at first; or CP_UTF8, as a user may choose it for
/// the whole system.
STANDIN_WIN32_API void setAnsiCodePage(UINT page);

}  // namespace standin::windows

#endif
