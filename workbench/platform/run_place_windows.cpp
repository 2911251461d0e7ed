#include "workbench/platform/run_place.h"

#include <cstdlib>

namespace workbench {

RunPlace::RunPlace(const std::filesystem::path& folder, const std::filesystem::path& profile,
                   const std::filesystem::path& module)
    : mFolder(folder), mModule(module) {
  // Links need a privilege on Windows, so the paths are absolute there. The wide form keeps names beyond the
  // code page.
  _wputenv_s(L"USERPROFILE", std::filesystem::absolute(profile).c_str());
}

RunPlace::~RunPlace() = default;

}  // namespace workbench
