/// The host's managed interface, in a process of its own: under mono, with a stand-in. Native builds only.
#ifndef WORKBENCH_MANAGED_HOST_H
#define WORKBENCH_MANAGED_HOST_H

#include <filesystem>
#include <string>

namespace workbench {

/// Loads the assembly as NETLOAD does, in a host with the menus of the customization file, and returns what
/// the command line shows (UTF-8, lines). The user's profile folder is this process's. Main thread. Throws
/// InputError when the assembly cannot be run.
std::string runAssembly(const std::filesystem::path& assembly, const std::filesystem::path& menus);

}  // namespace workbench

#endif
