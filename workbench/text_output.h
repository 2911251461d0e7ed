/// Writes files; every failure names the file and the reason.
#ifndef WORKBENCH_TEXT_OUTPUT_H
#define WORKBENCH_TEXT_OUTPUT_H

#include <filesystem>
#include <ostream>
#include <string_view>

namespace workbench {

/// Writes the text, replacing what the file held. Throws InputError with the system's reason, also when the
/// disk is full.
void writeFile(const std::filesystem::path& file, std::string_view text);

/// Writes out what standard output still holds. Throws InputError when it cannot take what has been printed.
void flushOutput(std::ostream& out);

}  // namespace workbench

#endif
