/// A user's profile of its own for each test, with the folders of the plug-in in it.
#ifndef TESTS_SETTINGS_SETTINGS_FIXTURE_H
#define TESTS_SETTINGS_SETTINGS_FIXTURE_H

#include "common_sources/settings.h"
#include "tests/support/settings_text.h"
#include "tests/support/user_profile.h"

#include <gtest/gtest.h>

#include <string>

inline const std::string kSettingsFile = "Lumetrapad/Applications/autocad_addin.ini";

/// `text` with the first `from` replaced by `to`, which must be there.
inline std::string replaced(std::string text, const std::string& from, const std::string& to) {
  const std::size_t start = text.find(from);
  EXPECT_NE(start, std::string::npos) << from;
  return start == std::string::npos ? text : text.replace(start, from.size(), to);
}

class SettingsTest : public testing::Test {
 protected:
  SettingsTest() { tests::setEnvironment("USERPROFILE", profile()); }

  /// The profile as the module's texts have it, in backslashes.
  std::string profile() const {
    const std::string path = mProfile.path("");
    return path.substr(0, path.size() - 1);
  }
  std::string file() const { return mProfile.settings(); }
  void write(const std::string& text) const { mProfile.writeSettings(text); }

  UserProfile mProfile;
};

#endif
