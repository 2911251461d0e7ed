/// Where the module's own file and the menu exporter next to it are. Any thread.
#ifndef COMMON_SOURCES_EXPORTER_PLACE_H
#define COMMON_SOURCES_EXPORTER_PLACE_H

#include <optional>
#include <string>

/// Full path of the module's own file; empty when the system does not report it.
std::wstring moduleFilePath();

/// Path of the menu exporter in the folder of `modulePath`; none when that path has no folder.
std::optional<std::wstring> exporterPath(const std::wstring& modulePath);

#endif
