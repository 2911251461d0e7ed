#include "workbench/live/toggles.h"

#include "workbench/running/settings_file.h"

namespace workbench {

void Toggles::loaded(std::string_view settings) {
  mIsOn = {};
  for (const SettingLine& line : settingLines(settings))
    for (std::size_t i = 0; i < kToggles.size(); ++i)
      if (kToggles[i].setting != nullptr && line.key == kToggles[i].setting)
        // As the module reads a switch.
        mIsOn[i] = line.value.find("on") != std::string::npos;
}

void Toggles::printed(std::string_view text) {
  for (std::size_t i = 0; i < kToggles.size(); ++i) {
    const std::size_t at = text.find(kToggles[i].printed);
    if (at == std::string_view::npos) continue;
    const std::string_view value = text.substr(at + std::string_view(kToggles[i].printed).size());
    mIsOn[i] = value.find("on") != std::string_view::npos;
  }
}

}  // namespace workbench
