/// What a library must be to be loaded as a module; the same on every platform.
#ifndef WORKBENCH_MODULE_CHECK_H
#define WORKBENCH_MODULE_CHECK_H

#include "workbench/input_error.h"

#include <cstdint>
#include <string>

namespace workbench {

/// Interface release that a module must report: 19.0, the major number in the high 16 bits.
constexpr int kHostApiVersion = 0x130000;

/// The export that reports the release; called before the entry point, since a module for another release
/// might crash there.
using ApiVersionFunction = std::uint32_t (*)(std::uint32_t);

/// The error of a file that is no such module.
InputError notAModule(const std::string& file, const std::string& found);

/// The address of an export. A missing one is the user's mistake, a wrong file: throws InputError.
void* requireExport(void* address, const char* name, const std::string& file);

/// Throws InputError for a module that is built for another release of the host.
void requireApiVersion(std::uint32_t version, const std::string& file);

}  // namespace workbench

#endif
