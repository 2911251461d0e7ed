#include "packaging/bundle_files.h"
#include "packaging/lm_check/client_probe.h"
#include "packaging/lm_check/machine.h"
#include "util/util.h"

#include <windows.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <string_view>

namespace {

// R19.0 is AutoCAD 2013; every other release has a key of its own.
constexpr const char* kReleaseKey = "SOFTWARE\\Autodesk\\AutoCAD\\R19.0";
constexpr const char* kDriverKey = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\App Paths\\lm_daemon.exe";
constexpr const char* kClientLibrary = "lmt_ctrlr_64.dll";
constexpr const char* kBundleFolder = "\\Autodesk\\ApplicationPlugins\\Lumetrapad.bundle";

std::string variable(const char* nameP) {
  const char* const valueP = std::getenv(nameP);
  return valueP == nullptr ? std::string() : std::string(valueP);
}

/// Text value of a key of the machine; empty when there is none. `view` chooses the 32-bit or 64-bit
/// registry.
std::string registryText(const std::string& key, const char* nameP, REGSAM view) {
  HKEY handle = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, key.c_str(), 0, KEY_QUERY_VALUE | view, &handle) != ERROR_SUCCESS)
    return {};
  std::array<char, 1024> text{};
  // One less than the buffer: the registry does not promise a terminator.
  auto size = static_cast<DWORD>(text.size() - 1);
  DWORD type = REG_NONE;
  const LSTATUS status =
      RegQueryValueExA(handle, nameP, nullptr, &type, reinterpret_cast<BYTE*>(text.data()), &size);
  RegCloseKey(handle);
  return status == ERROR_SUCCESS && type == REG_SZ ? std::string(text.data()) : std::string();
}

/// Folders of the installed products of AutoCAD 2013 that are there.
std::vector<std::string> autoCadFolders(REGSAM view) {
  // Each language and product of the release has a key of its own.
  std::vector<std::string> folders;
  HKEY handle = nullptr;
  if (RegOpenKeyExA(HKEY_LOCAL_MACHINE, kReleaseKey, 0, KEY_ENUMERATE_SUB_KEYS | view, &handle) !=
      ERROR_SUCCESS)
    return folders;
  std::array<char, 256> product{};
  auto size = static_cast<DWORD>(product.size());
  for (DWORD i = 0;
       RegEnumKeyExA(handle, i, product.data(), &size, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
       ++i, size = static_cast<DWORD>(product.size())) {
    const std::string folder =
        registryText(std::string(kReleaseKey) + "\\" + product.data(), "AcadLocation", view);
    // An uninstalled AutoCAD may leave its keys.
    if (!folder.empty() && Util::folderExists(folder)) folders.push_back(folder);
  }
  RegCloseKey(handle);
  return folders;
}

/// Whether the file's header says that it is a 64-bit Windows program.
bool is64BitProgram(const std::string& path) {
  // Where a Windows program holds the offset of its PE header; the machine type follows the signature.
  constexpr std::streamoff kHeaderOffset = 0x3C;
  constexpr std::uint16_t kX64 = 0x8664;
  std::ifstream file(path, std::ios::binary);
  std::uint32_t offset = 0;
  std::array<char, 4> signature{};
  std::uint16_t machine = 0;
  file.seekg(kHeaderOffset).read(reinterpret_cast<char*>(&offset), sizeof offset);
  file.seekg(offset).read(signature.data(), signature.size());
  file.read(reinterpret_cast<char*>(&machine), sizeof machine);
  return file.good() && std::string_view(signature.data(), 2) == "PE" && machine == kX64;
}

/// Whether Windows keeps the mark of the web beside the file.
bool isBlocked(const std::string& path) {
  const HANDLE mark = CreateFileA((path + ":Zone.Identifier").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (mark == INVALID_HANDLE_VALUE) return false;
  std::array<char, 256> text{};
  DWORD count = 0;
  const bool isRead = ReadFile(mark, text.data(), static_cast<DWORD>(text.size()), &count, nullptr) != 0;
  CloseHandle(mark);
  const std::string_view zone(text.data(), count);
  // 3 is the Internet, 4 the restricted sites; lower zones are trusted.
  return isRead && (zone.find("ZoneId=3") != zone.npos || zone.find("ZoneId=4") != zone.npos);
}

Bundle bundleIn(const std::string& folder, bool isForAllUsers) {
  Bundle bundle;
  bundle.folder = folder;
  bundle.isForAllUsers = isForAllUsers;
  for (const BundleFile& file : kBundleFiles) {
    const std::string path = folder + "\\" + std::string(file.path);
    const std::string name(file.path);
    if (!Util::fileExists(path)) {
      bundle.missing.push_back(name);
      continue;
    }
    if (isBlocked(path)) bundle.blocked.push_back(name);
    if (file.is64Bit && !is64BitProgram(path)) bundle.not64Bit.push_back(name);
  }
  return bundle;
}

void gatherBundles(Machine& machine) {
  // The 64-bit folder, whatever the bitness of this program.
  const std::string programs =
      variable("ProgramW6432").empty() ? variable("ProgramFiles") : variable("ProgramW6432");
  for (const auto& [parent, isForAllUsers] :
       {std::pair(programs, true), std::pair(variable("APPDATA"), false)}) {
    if (parent.empty()) continue;
    machine.bundlePlaces.push_back(parent + "\\Autodesk\\ApplicationPlugins");
    if (Util::folderExists(parent + kBundleFolder))
      machine.bundles.push_back(bundleIn(parent + kBundleFolder, isForAllUsers));
  }
}

/// Where Windows looks for it when AutoCAD loads the module, in that order.
std::string clientLibraryPath(const Machine& machine, const std::vector<std::string>& autoCads) {
  // SearchPath takes the places as one text, in the order of its search.
  std::string places;
  for (const Bundle& bundle : machine.bundles) places += bundle.folder + "\\Contents;";
  for (const std::string& folder : autoCads) places += folder + ";";
  std::array<char, MAX_PATH> folder{};
  if (GetSystemDirectoryA(folder.data(), MAX_PATH) != 0) places += std::string(folder.data()) + ";";
  if (GetWindowsDirectoryA(folder.data(), MAX_PATH) != 0) places += std::string(folder.data()) + ";";
  places += variable("PATH");
  std::array<char, 1024> path{};
  const DWORD length = SearchPathA(places.c_str(), kClientLibrary, nullptr, static_cast<DWORD>(path.size()),
                                   path.data(), nullptr);
  return length > 0 && length < path.size() ? std::string(path.data()) : std::string();
}

ClientLibrary gatherClient(const Machine& machine, const std::vector<std::string>& autoCads) {
  ClientLibrary client;
  // The 64-bit registry, whatever the bitness of this program.
  const std::string daemon = registryText(kDriverKey, "", KEY_WOW64_64KEY);
  client.driverFolder = daemon.substr(0, daemon.rfind('\\') == std::string::npos ? 0 : daemon.rfind('\\'));
  client.isInDriverFolder =
      !client.driverFolder.empty() && Util::fileExists(client.driverFolder + "\\" + kClientLibrary);
  client.path = clientLibraryPath(machine, autoCads);
  client.is64Bit = client.path.empty() || is64BitProgram(client.path);
  // A 32-bit library cannot be loaded here, and its finding says more than the error of loading it.
  if (!client.path.empty() && client.is64Bit) probeClient(client);
  return client;
}

std::string narrow(const std::wstring& text) {
  // At most three bytes for each 16-bit character, in UTF-8 as the code page.
  std::string result(3 * text.size() + 1, '\0');
  const int count = WideCharToMultiByte(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                        static_cast<int>(result.size()), nullptr, nullptr);
  result.resize(static_cast<std::size_t>(count > 0 ? count : 0));
  return result;
}

std::wstring wide(const std::string& text) {
  std::wstring result(text.size() + 1, L'\0');
  const int count = MultiByteToWideChar(CP_ACP, 0, text.data(), static_cast<int>(text.size()), result.data(),
                                        static_cast<int>(result.size()));
  result.resize(static_cast<std::size_t>(count > 0 ? count : 0));
  return result;
}

/// A character of two bytes whose second is the backslash's.
bool hasFalseBackslash(const std::string& path) {
  for (std::size_t i = 0; i + 1 < path.size(); ++i) {
    // Walked in pairs, because the second byte of a pair may itself look like a lead byte.
    if (IsDBCSLeadByteEx(CP_ACP, static_cast<BYTE>(path[i])) == 0) continue;
    if (path[i + 1] == '\\') return true;
    ++i;
  }
  return false;
}

void gatherCodePage(Machine& machine) {
  machine.codePage = GetACP();
  for (const wchar_t* const nameP : {L"USERPROFILE", L"APPDATA", L"ProgramFiles"}) {
    // The wide text is the true one; the narrow one is what the module gets.
    const wchar_t* const valueP = _wgetenv(nameP);
    if (valueP == nullptr) continue;
    const std::string path = narrow(valueP);
    // A letter that does not come back unchanged has been replaced by a similar one or by "?".
    if (wide(path) != valueP) machine.lossyPaths.push_back(path);
    if (hasFalseBackslash(path)) machine.misreadPaths.push_back(path);
  }
}

}  // namespace

Machine gatherMachine() {
  Machine machine;
  const std::vector<std::string> autoCads = autoCadFolders(KEY_WOW64_64KEY);
  machine.hasAutoCad = !autoCads.empty();
  // Asked only without a 64-bit one, since both may be installed.
  machine.has32BitAutoCad = !machine.hasAutoCad && !autoCadFolders(KEY_WOW64_32KEY).empty();
  gatherBundles(machine);
  machine.client = gatherClient(machine, autoCads);
  gatherCodePage(machine);
  return machine;
}
