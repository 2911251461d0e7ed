/// What a library in memory imports, read from its import table. `image` is a library that is loaded,
/// or mapped without its references resolved. Windows only; any thread.
#ifndef WORKBENCH_IMPORT_TABLE_H
#define WORKBENCH_IMPORT_TABLE_H

#include <windows.h>

#include <string>
#include <vector>

namespace workbench {

/// Names of the libraries that it imports from.
std::vector<std::string> importedLibraries(HMODULE image);

/// Where a loaded library keeps the address of a function that it imports by name; null when it does not
/// import it. The memory may be read only.
void** importSlot(HMODULE image, const std::string& library, const std::string& function);

}  // namespace workbench

#endif
