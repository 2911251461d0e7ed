#include "workbench/input_error.h"
#include "workbench/platform/managed_host.h"

namespace workbench {

std::string runAssembly(const std::filesystem::path&, const std::filesystem::path& menus) {
  // The stand-in of the managed host runs under mono, which the Windows build does not come with.
  throw InputError({menus.string()}, "a menu file: assemblies run in native builds only",
                   "a customization file");
}

}  // namespace workbench
