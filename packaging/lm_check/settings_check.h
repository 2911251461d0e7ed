/// What is wrong in a settings file. The values are read by the module's own reader and judged by its own
/// list of settings; the lines give their places.
#ifndef PACKAGING_LM_CHECK_SETTINGS_CHECK_H
#define PACKAGING_LM_CHECK_SETTINGS_CHECK_H

#include "common_sources/settings_list.h"
#include "packaging/lm_check/finding.h"
#include "packaging/lm_check/profile.h"

#include <map>
#include <string>

/// The values that the module would work with: those of the file, or the defaults when it would reset the
/// file.
class EffectiveSettings {
 public:
  explicit EffectiveSettings(const std::string& path);

  /// Whether there is a file that the module would overwrite with its defaults.
  bool isReset() const { return mIsReset; }
  const std::string& text(std::string_view key) const { return mTexts.find(key)->second; }
  bool isOn(std::string_view key) const;
  std::int32_t number(std::string_view key) const;

 private:
  std::map<std::string, std::string, std::less<>> mTexts;
  bool mIsReset = false;
};

Findings checkSettings(const Profile& profile);

#endif
