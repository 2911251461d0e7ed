#include "common_sources/exporter_place.h"

// clang-format off
#include <windows.h>
#include "dbxEntryPoint.h"
// clang-format on

#include <algorithm>
#include <array>

std::wstring moduleFilePath() {
  std::array<wchar_t, MAX_PATH> path{};
  // A longer path is cut to MAX_PATH; the exporter is not found then, which is logged.
  const DWORD length = GetModuleFileNameW(_hdllInstance, path.data(), static_cast<DWORD>(path.size()));
  return {path.data(), std::min<std::size_t>(length, path.size())};
}

std::optional<std::wstring> exporterPath(const std::wstring& modulePath) {
  // Cut while it is wide: in some code pages a backslash is also the second byte of a letter.
  const std::size_t folderEnd = modulePath.rfind(L'\\');
  if (folderEnd == std::wstring::npos) return std::nullopt;
  // The exporter's own name: its year does not follow the host's release.
  return modulePath.substr(0, folderEnd) + L"\\MenuScribe2015.dll";
}
