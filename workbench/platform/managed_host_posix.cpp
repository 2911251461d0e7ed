#include "workbench/input_error.h"
#include "workbench/platform/managed_host.h"
#include "workbench/platform/module_loader.h"

#include <array>
#include <cstdio>

namespace workbench {
namespace {

namespace fs = std::filesystem;

/// The code page of the stand-in of Windows, in which the module reads.
constexpr const char* kCodePage = "1252";

/// The path as one word of a shell command.
std::string quoted(const fs::path& path) {
  std::string text = "'";
  for (const char letter : path.string())
    // Nothing is special inside single quotes but the quote itself, which has to be written outside of them.
    text += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
  return text + "'";
}

}  // namespace

std::string runAssembly(const fs::path& assembly, const fs::path& menus) {
  const fs::path host =
      // In the build folder; the managed host is not shipped.
      (executableFolder() / ".." / "exporter" / "standin" / "netload_host.exe").lexically_normal();
  // Error output goes to the same pipe, so that a failure's text gets into the message.
  const std::string command = "mono " + quoted(host) + " " + quoted(assembly) + " --menu " + quoted(menus) +
                              " --code-page " + kCodePage + " 2>&1";
  FILE* const pipe = popen(command.c_str(), "r");
  std::string shown;
  std::array<char, 4096> part{};
  while (pipe != nullptr && std::fgets(part.data(), part.size(), pipe) != nullptr) shown += part.data();
  // pclose waits for the process, so the menu file is complete from here on.
  if (pipe == nullptr || pclose(pipe) != 0)
    throw InputError({menus.string()}, "menus that " + assembly.filename().string() + " reads under mono",
                     inQuotes(shown));
  return shown;
}

}  // namespace workbench
