/// Writes files; every failure names the file and the reason.
#ifndef WORKBENCH_TEXT_OUTPUT_H
#define WORKBENCH_TEXT_OUTPUT_H

#include <filesystem>
#include <string_view>

namespace workbench {

/// Writes the text, replacing what the file held. Throws InputError with the system's reason, also when the
/// disk is full.
void writeFile(const std::filesystem::path& file, std::string_view text);

}  // namespace workbench

#endif
