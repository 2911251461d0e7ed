/// A user's profile of its own for one test: a folder with the folders of the plug-in in it, which the
/// environment names as USERPROFILE.
#ifndef TESTS_SUPPORT_USER_PROFILE_H
#define TESTS_SUPPORT_USER_PROFILE_H

#include "tests/support/temp_folder.h"

#include <filesystem>
#include <string>

class UserProfile : public TempFolder {
 public:
  UserProfile() {
    std::filesystem::create_directories(root() / kFolder / "Applications");
    tests::setEnvironment("USERPROFILE", root().string());
  }

  /// The folder of the settings file and the menu file.
  std::filesystem::path applications() const { return root() / kFolder / "Applications"; }

  void writeSettings(const std::string& text) const { TempFolder::write(kSettingsFile, text); }
  std::string settings() const { return read(kSettingsFile); }

  /// The log under its default name, as it is now.
  std::string log() const { return read(kLogFile); }
  void removeLog() const { std::filesystem::remove(root() / kLogFile); }

 private:
  static constexpr const char* kFolder = "Lumetrapad";
  static constexpr const char* kSettingsFile = "Lumetrapad/Applications/autocad_addin.ini";
  static constexpr const char* kLogFile = "Lumetrapad/autocad_addin_log.txt";
};

#endif
