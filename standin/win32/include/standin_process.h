/// The paths that modules of the process report. Any thread.
#ifndef STANDIN_PROCESS_H
#define STANDIN_PROCESS_H

#include "standin_win32_api.h"

#include <string>

namespace standin::windows {

/// GetModuleFileNameW returns `path` for this module handle from now on; an empty path ends that. Without a
/// path of its own a handle is an address inside the module, and null is the program itself.
STANDIN_WIN32_API void setModulePath(const void* module, const std::wstring& path);

}  // namespace standin::windows

#endif
