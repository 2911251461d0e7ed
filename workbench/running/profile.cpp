#include "workbench/running/profile.h"

#include "workbench/input_error.h"
#include "workbench/platform/code_page.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <system_error>

namespace workbench {

namespace fs = std::filesystem;

namespace {

/// Code page in which the exporter writes and the module reads: that of the stand-in of Windows, and of Wine
/// as it is set up for the tests.
constexpr int kCodePage = 1252;

}  // namespace

Profile::Profile(const fs::path& profile) : mFolder(fs::absolute(profile).lexically_normal()) {}

void Profile::make() const {
  std::error_code error;
  fs::create_directories(applications(), error);
  if (error) throw InputError({applications().string()}, "a folder that can be made", error.message());
  // The module reports a failure to write in its log only, which may be the file that it cannot write.
  for (const fs::path& folder : {settings(), applications()}) {
    const fs::path trial = folder / ".trial";
    // Permissions are not enough: a full disk or a read-only mount only fails when a file is made.
    writeFile(trial, "");
    fs::remove(trial, error);
  }
}

void Profile::writeMenu(const std::string& bytes) const {
  writeFile(menuFile(), bytes);
}

std::string Profile::menu() const {
  if (!fs::is_regular_file(menuFile())) return {};
  const std::string bytes = readFile(menuFile(), "a menu file");
  // Files that people write for a session are UTF-8. Text of the code page that happens to be valid UTF-8 is
  // rare enough, except ASCII, which is the same in both.
  if (toUtf8(bytes) == bytes) return bytes;
  return decodedCodePage(bytes, kCodePage).value_or(toUtf8(bytes));
}

}  // namespace workbench
