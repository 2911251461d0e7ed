#include "workbench/running/profile.h"

#include "workbench/input_error.h"
#include "workbench/text_input.h"
#include "workbench/text_output.h"

#include <system_error>

namespace workbench {

namespace fs = std::filesystem;

namespace {

std::string textOf(const fs::path& file, const char* expected) {
  if (!fs::is_regular_file(file)) return {};
  return toUtf8(readFile(file, expected));
}

}  // namespace

Profile::Profile(const fs::path& profile) : mFolder(fs::absolute(profile).lexically_normal()) {}

void Profile::make() const {
  std::error_code error;
  fs::create_directories(applications(), error);
  if (error) throw InputError({applications().string()}, "a folder that can be made", error.message());
  // The module only logs what it cannot write, and the log may be what it cannot.
  for (const fs::path& folder : {settings(), applications()}) {
    const fs::path trial = folder / ".trial";
    writeFile(trial, "");
    fs::remove(trial, error);
  }
}

void Profile::writeMenu(const std::string& bytes) const {
  writeFile(menuFile(), bytes);
}

std::string Profile::menu() const {
  return textOf(menuFile(), "a menu file");
}

}  // namespace workbench
