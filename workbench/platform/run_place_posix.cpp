#include "workbench/input_error.h"
#include "workbench/platform/run_place.h"

#include <cstdlib>
#include <system_error>

namespace workbench {
namespace {

namespace fs = std::filesystem;

constexpr const char* kProfile = "profile";
constexpr const char* kModuleFolder = "module";

/// A link in the current folder, unless what it points to is there under that name.
void link(const fs::path& target, const char* name) {
  std::error_code error;
  // The profile is in the folder itself unless the user has named another one.
  if (fs::equivalent(target, name, error)) return;
  fs::create_directory_symlink(target, name, error);
  if (error) throw InputError({name}, "a link that can be made", error.message());
}

}  // namespace

RunPlace::RunPlace(const fs::path& folder, const fs::path& profile, const fs::path& module)
    : mFolder(fs::absolute(folder)), mBefore(fs::current_path()) {
  const fs::path profileFolder = fs::absolute(profile);
  const fs::path moduleFile = fs::absolute(module);
  // The paths are made absolute before this line, because it changes what relative ones mean.
  fs::current_path(mFolder);
  link(profileFolder, kProfile);
  link(moduleFile.parent_path(), kModuleFolder);
  // Before the module is loaded and while there is one thread: setenv is not safe with others.
  setenv("USERPROFILE", kProfile, 1);
  mModule = fs::path(kModuleFolder) / moduleFile.filename();
}

RunPlace::~RunPlace() {
  std::error_code ignored;
  for (const char* const name : {kProfile, kModuleFolder})
    // Only links are removed, never a profile that the run has made in the folder.
    if (fs::is_symlink(mFolder / name)) fs::remove(mFolder / name, ignored);
  fs::current_path(mBefore, ignored);
}

}  // namespace workbench
