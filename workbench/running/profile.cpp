#include "workbench/running/profile.h"

#include "workbench/input_error.h"
#include "workbench/text_input.h"

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

void Profile::clear() const {
  std::error_code error;
  fs::remove_all(settings(), error);
  if (error) throw InputError({settings().string()}, "a folder that can be removed", error.message());
}

void Profile::make() const {
  std::error_code error;
  fs::create_directories(applications(), error);
  if (error) throw InputError({applications().string()}, "a folder that can be made", error.message());
}

void Profile::copyMenu(const fs::path& menu) const {
  const fs::path copy = menuFile();
  std::error_code error;
  fs::copy_file(menu, copy, fs::copy_options::overwrite_existing, error);
  if (error) throw InputError({copy.string()}, "a file that can be written", error.message());
}

std::string Profile::log() const {
  return textOf(settings() / "autocad_addin_log.txt", "the module's log");
}

std::string Profile::menu() const {
  return textOf(menuFile(), "a menu file");
}

}  // namespace workbench
